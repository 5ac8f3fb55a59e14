#include "tools/console/Console.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cstdio>

#include "tools/files/OutputFile.h"

namespace kvx::tool {

void PrintMessage(const std::string& message) {
    std::string line = message;
    // File names may hold line breaks; scripts count on one line for each message.
    std::replace_if(
        line.begin(), line.end(), [](unsigned char letter) { return std::iscntrl(letter) != 0; }, ' ');
    fmt::print(stderr, "kvx-demosaic: {}\n", line);
}

void PrintText(const std::string& text) {
    WriteOutput("-", Bytes(text.begin(), text.end()));
}

}  // namespace kvx::tool
