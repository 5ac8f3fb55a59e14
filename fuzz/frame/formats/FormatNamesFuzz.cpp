// Names and codes of pixel formats. The input is a text: as such a name, its first bytes a code, and the fields of a
// format made by hand.
#include <algorithm>
#include <string_view>

#include "KvxFrame/Format.h"
#include "support/GuardedBuffer.h"
#include "support/Refusals.h"

using namespace kvx::fuzz;
using namespace kvx::frame;

namespace {

bool IsKnown(const Format& format) {
    const auto& all = AllFormats();
    return std::find(all.begin(), all.end(), format) != all.end();
}

/** What is written for a format leads back to it. */
void ReadBack(const Format& format) {
    for (const FormatName& name : NamesOf(format))
        Require(FindFormat(name.name) == format, "a name of a format is that format's");
    if (const auto code = PfncCode(format)) Require(FormatByPfncCode(*code) == format, "so is PFNC's code");
    if (const auto code = LibraryCode(format))
        Require(FormatByLibraryCode(*code) == format, "so is the library's code");
    if (const auto code = Fourcc(format)) Require(FormatByFourcc(*code) == format, "so is V4L2's code");
}

void LookUpName(std::string_view text) {
    const std::optional<Format> found = FindFormat(text);
    Format byName;
    const bool isRefused = IsRefused([&] { byName = FormatByName(text); }, {0x80070002});
    Require(isRefused != found.has_value(), "with or without exceptions names are the same");
    if (!found) return;
    Require(byName == *found, "with or without exceptions formats are the same");
    Require(IsKnown(*found), "what has a name is in the list");
    ReadBack(*found);
}

template <auto find, auto write>
void LookUpCode(uint32_t code) {
    const std::optional<Format> found = find(code);
    if (!found) return;
    Require(IsKnown(*found), "what has a code is in the list");
    Require(write(*found).has_value(), "what was found by a code has one");
    ReadBack(*found);
}

/** Fields of which most fit together: the text's letters and digits are near each other. */
Format DrawFormat(Input& input) {
    return {static_cast<Family>(input.Below(5)), static_cast<uint8_t>(8 + input.Below(10)),
            static_cast<Layout>(input.Below(7)), static_cast<uint8_t>(input.Below(17)),
            static_cast<Order>(input.Below(7))};
}

void UseAnyFormat(const Format& format, uint32_t width) {
    Require(IsValid(format) == IsKnown(format), "valid is what is in the list");
    Require(NamesOf(format).empty() != IsValid(format), "valid is what has a name");
    Require(!Name(format).empty(), "every format can be told");
    if (IsValid(format)) {
        Require(FindFormat(Name(format)) == format, "the best-known name is the format's");
        Require(IsValid(Unpacked(format)), "without its packing it is a format, too");
        Require(RowBytes(format, width) >= uint64_t{width} * format.bits / 8, "a row holds its samples");
    }
    ReadBack(format);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input input(data, size);
    const GuardedBuffer text(size);
    if (size > 0) std::memcpy(text.Data(), data, size);
    LookUpName({reinterpret_cast<const char*>(text.Data()), size});
    const Format format = DrawFormat(input);
    UseAnyFormat(format, input.Take<uint32_t>());
    const auto code = Input(data, size).Take<uint32_t>();
    LookUpCode<FormatByPfncCode, PfncCode>(code);
    LookUpCode<FormatByLibraryCode, LibraryCode>(code);
    LookUpCode<FormatByFourcc, Fourcc>(code);
    return 0;
}
