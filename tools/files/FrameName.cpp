#include "tools/files/FrameName.h"

#include <fmt/format.h>

#include <cctype>
#include <charconv>
#include <filesystem>
#include <string_view>

namespace kvx::tool {
namespace {

bool IsWordLetter(char letter) {
    return std::isalnum(static_cast<unsigned char>(letter)) != 0;
}

/** Whether `name` holds `token` with neither a letter nor a digit next to it. */
bool HoldsToken(std::string_view name, std::string_view token) {
    for (size_t start = name.find(token); start != std::string_view::npos; start = name.find(token, start + 1)) {
        const size_t end = start + token.size();
        if ((start == 0 || !IsWordLetter(name[start - 1])) && (end == name.size() || !IsWordLetter(name[end]))) {
            return true;
        }
    }
    return false;
}

/** A word such as "1920x1200". */
std::optional<FrameSize> ParseSize(std::string_view word) {
    FrameSize size{};
    const char* end = word.data() + word.size();
    const auto [afterWidth, widthError] = std::from_chars(word.data(), end, size.width);
    if (widthError != std::errc() || afterWidth == end || *afterWidth != 'x') {
        return std::nullopt;
    }
    const auto [afterHeight, heightError] = std::from_chars(afterWidth + 1, end, size.height);
    if (heightError != std::errc() || afterHeight != end || size.width == 0 || size.height == 0) {
        return std::nullopt;
    }
    return size;
}

std::optional<FrameSize> FindSize(std::string_view name) {
    std::optional<FrameSize> found;
    for (size_t start = 0, end = 0; start < name.size(); start = end + 1) {
        for (end = start; end < name.size() && IsWordLetter(name[end]);) {
            ++end;
        }
        const std::optional<FrameSize> size = ParseSize(name.substr(start, end - start));
        if (size && found && *size != *found) {
            return std::nullopt;
        }
        found = size ? size : found;
    }
    return found;
}

struct NamedFormat {
    std::string name;
    frame::Format format;
};

/** Names that are long enough to search for: those of drivers and frameworks are a few common letters. */
const std::vector<NamedFormat>& LongNames() {
    static const std::vector<NamedFormat> names = [] {
        std::vector<NamedFormat> all;
        for (const frame::Format& format : frame::AllFormats()) {
            for (const frame::FormatName& name : frame::NamesOf(format)) {
                if (name.scheme <= frame::Scheme::Frame) {
                    all.push_back({name.name, format});
                }
            }
        }
        return all;
    }();
    return names;
}

std::optional<frame::Format> FindFormat(std::string_view name) {
    const NamedFormat* longest = nullptr;
    bool isAmbiguous = false;
    for (const NamedFormat& known : LongNames()) {
        if ((longest != nullptr && known.name.size() < longest->name.size()) || !HoldsToken(name, known.name)) {
            continue;
        }
        const bool isAsLong = longest != nullptr && known.name.size() == longest->name.size();
        isAmbiguous = isAsLong && (isAmbiguous || longest->format != known.format);
        longest = &known;
    }
    return longest == nullptr || isAmbiguous ? std::nullopt : std::optional(longest->format);
}

}  // namespace

FrameName ParseFrameName(const std::string& path) {
    const std::string name = std::filesystem::path(path).filename().string();
    return {FindSize(name), FindFormat(name)};
}

std::string MakeFrameName(const std::string& stem, FrameSize size, const frame::Format& format) {
    return fmt::format("{}_{}x{}_{}.raw", stem, size.width, size.height, frame::Name(format));
}

}  // namespace kvx::tool
