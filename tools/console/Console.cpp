#include "tools/console/Console.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "tools/ToolError.h"
#include "tools/files/OutputFile.h"

namespace kvx::tool {

void PrintMessage(const std::string& message) {
    std::string line = message;
    // File names may contain line breaks; scripts expect one line per message.
    std::replace_if(
        line.begin(), line.end(), [](unsigned char letter) { return std::iscntrl(letter) != 0; }, ' ');
    WriteStandardError("kvx-demosaic: " + line + "\n");
}

void WriteStandardError(const std::string& text) {
    // There is nowhere to report a failure.
    [[maybe_unused]] const int written = std::fputs(text.c_str(), stderr);
}

void OpenStandardStreams() {
    // Read-only for output and write-only for input: using a stream that was closed still fails.
    constexpr std::array kModes = {O_WRONLY, O_RDONLY, O_RDWR};
    for (int stream = 0; stream < static_cast<int>(kModes.size()); ++stream) {
        // A descriptor that is opened gets the lowest free number.
        if (::fcntl(stream, F_GETFD) < 0 && ::open("/dev/null", kModes[stream]) != stream) {
            std::_Exit(static_cast<int>(ExitCode::Unexpected));
        }
    }
}

void PrintText(const std::string& text) {
    WriteOutput("-", Bytes(text.begin(), text.end()));
}

std::string JsonText(const nlohmann::ordered_json& json, int indent) {
    return json.dump(indent, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace kvx::tool
