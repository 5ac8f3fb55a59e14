// From a name to its format.
#include <fmt/ranges.h>

#include <algorithm>
#include <cctype>
#include <map>

#include "frame/base/Fail.h"
#include "frame/formats/FormatTables.h"
#include "frame/formats/NearestNames.h"

namespace kvx::frame {
namespace {

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return lower;
}

/** What belongs to the program, not to the mosaic: "cv::", "cv2." in front, the algorithm "_EA" or "_VNG" behind. */
std::string_view WithoutOpenCvTrimmings(std::string_view name) {
    for (const std::string_view prefix : {"cv::", "cv2."})
        if (name.substr(0, prefix.size()) == prefix) name.remove_prefix(prefix.size());
    if (name.substr(0, 11) != "COLOR_Bayer") return name;
    for (const std::string_view suffix : {"_EA", "_VNG"})
        if (name.size() > suffix.size() && name.substr(name.size() - suffix.size()) == suffix)
            name.remove_suffix(suffix.size());
    return name;
}

/** All names, to be found as they are written and without regard to case. */
struct NameIndex {
    std::map<std::string, Format, std::less<>> exact;
    std::map<std::string, std::optional<Format>> lower;  // std::nullopt if only case distinguishes two formats

    NameIndex() {
        for (const Format& format : AllFormats()) {
            for (FormatName& name : NamesOf(format)) {
                const auto [entry, isNew] = lower.emplace(LowerCase(name.name), format);
                if (!isNew && entry->second != format) entry->second.reset();
                exact.emplace(std::move(name.name), format);
            }
        }
    }
};

const NameIndex& Names() {
    static const NameIndex index;
    return index;
}

std::vector<Format> MakeAllFormats() {
    std::vector<Format> formats;
    Format format;
    for (const Family family : {Family::Mono, Family::Bayer, Family::TrueSense, Family::Colour})
        for (uint8_t bits = 8; bits <= 16; bits += 2)
            for (uint8_t layout = 0; layout <= static_cast<uint8_t>(Layout::Mipi); ++layout)
                for (uint8_t order = 0; order <= static_cast<uint8_t>(Order::Bgrx); ++order)
                    for (uint8_t phase = 0; phase < 16; ++phase) {
                        format = {family, bits, static_cast<Layout>(layout), phase, static_cast<Order>(order)};
                        if (IsValid(format)) formats.push_back(format);
                    }
    return formats;
}

}  // namespace

const std::vector<Format>& AllFormats() {
    static const std::vector<Format> formats = MakeAllFormats();
    return formats;
}

std::optional<Format> FindFormat(std::string_view name) {
    name = WithoutOpenCvTrimmings(name);
    if (const auto found = Names().exact.find(name); found != Names().exact.end()) return found->second;
    const auto found = Names().lower.find(LowerCase(name));
    return found == Names().lower.end() ? std::nullopt : found->second;
}

Format FormatByName(std::string_view name) {
    if (const std::optional<Format> format = FindFormat(name)) return *format;
    std::vector<std::string> names;
    for (const auto& [known, format] : Names().exact) names.push_back(known);
    Fail(KvxResult_UnknownName, "no format is called '{}': did you mean {}?", name,
         fmt::join(NearestNames(name, names, 3), ", "));
}

}  // namespace kvx::frame
