// Names, codes and sizes of formats for C.
#include "KvxFrame/FormatC.h"

#include <optional>

#include "frame/c/Records.h"

namespace frame = kvx::frame;
using frame::Fail;
using frame::c::CopyText;
using frame::c::FormatOf;
using frame::c::Guarded;
using frame::c::RecordOf;
using frame::c::Required;

namespace {

static_assert(frame::Scheme{KvxFrameScheme_Library} == frame::Scheme::Library &&
              frame::Scheme{KvxFrameScheme_Pfnc} == frame::Scheme::Pfnc &&
              frame::Scheme{KvxFrameScheme_Frame} == frame::Scheme::Frame &&
              frame::Scheme{KvxFrameScheme_GStreamer} == frame::Scheme::GStreamer &&
              frame::Scheme{KvxFrameScheme_V4l2} == frame::Scheme::V4l2 &&
              frame::Scheme{KvxFrameScheme_OpenCv} == frame::Scheme::OpenCv);

uint32_t ByCode(const char* kind, uint32_t code, std::optional<frame::Format> (*find)(uint32_t),
                KvxFrameFormat* format) noexcept {
    return Guarded([&] {
        KvxFrameFormat& found = Required(format, "format");
        const std::optional<frame::Format> known = find(code);
        if (!known) Fail(KvxResult_UnknownName, "no format has the {} code 0x{:08X}", kind, code);
        found = RecordOf(*known);
    });
}

/** `fact(format)`, or 0 for a record that is no format. */
template <class Fact>
auto FactOf(const KvxFrameFormat* record, const Fact& fact) noexcept {
    decltype(fact(frame::Format())) result = 0;
    Guarded([&] { result = fact(FormatOf(record)); });
    return result;
}

}  // namespace

uint32_t KvxFrame_FormatByName(const char* name, KvxFrameFormat* format) noexcept {
    return Guarded([&] {
        KvxFrameFormat& found = Required(format, "format");
        found = RecordOf(frame::FormatByName(&Required(name, "name")));
    });
}

uint32_t KvxFrame_FormatByPfncCode(uint32_t code, KvxFrameFormat* format) noexcept {
    return ByCode("PFNC", code, frame::FormatByPfncCode, format);
}
uint32_t KvxFrame_FormatByFourcc(uint32_t fourcc, KvxFrameFormat* format) noexcept {
    return ByCode("V4L2", fourcc, frame::FormatByFourcc, format);
}
uint32_t KvxFrame_FormatByLibraryCode(uint32_t pixelType, KvxFrameFormat* format) noexcept {
    return ByCode("pixel-type", pixelType, frame::FormatByLibraryCode, format);
}

uint32_t KvxFrame_PfncCode(const KvxFrameFormat* format) noexcept {
    return FactOf(format, [](const frame::Format& found) { return frame::PfncCode(found).value_or(0); });
}
uint32_t KvxFrame_Fourcc(const KvxFrameFormat* format) noexcept {
    return FactOf(format, [](const frame::Format& found) { return frame::Fourcc(found).value_or(0); });
}
uint32_t KvxFrame_LibraryCode(const KvxFrameFormat* format) noexcept {
    return FactOf(format, [](const frame::Format& found) { return frame::LibraryCode(found).value_or(0); });
}

uint32_t KvxFrame_FormatCount() noexcept {
    uint32_t count = 0;
    Guarded([&] { count = static_cast<uint32_t>(frame::AllFormats().size()); });
    return count;
}

uint32_t KvxFrame_FormatAt(uint32_t index, KvxFrameFormat* format) noexcept {
    return Guarded([&] {
        KvxFrameFormat& found = Required(format, "format");
        const std::vector<frame::Format>& all = frame::AllFormats();
        if (index >= all.size()) Fail(KvxResult_UnknownName, "format {}: there are {}", index, all.size());
        found = RecordOf(all[index]);
    });
}

uint32_t KvxFrame_FormatName(const KvxFrameFormat* format, char* buffer, uint32_t* size) noexcept {
    return Guarded([&] { CopyText(frame::Name(FormatOf(format)), buffer, size); });
}

uint32_t KvxFrame_FormatNameAt(const KvxFrameFormat* format, uint32_t index, uint32_t* scheme, char* buffer,
                               uint32_t* size) noexcept {
    return Guarded([&] {
        const std::vector<frame::FormatName> names = frame::NamesOf(FormatOf(format));
        if (index >= names.size()) Fail(KvxResult_UnknownName, "name {}: there are {}", index, names.size());
        CopyText(names[index].name, buffer, size);
        if (scheme) *scheme = static_cast<uint32_t>(names[index].scheme);
    });
}

uint64_t KvxFrame_RowBytes(const KvxFrameFormat* format, uint32_t width) noexcept {
    return FactOf(format, [&](const frame::Format& found) { return frame::RowBytes(found, width); });
}

uint64_t KvxFrame_ImageBytes(const KvxFrameFormat* format, uint32_t width, uint32_t height, ptrdiff_t stride) noexcept {
    return FactOf(format, [&](const frame::Format& found) { return frame::ImageBytes(found, width, height, stride); });
}

char KvxFrame_FilterAt(const KvxFrameFormat* format, uint32_t row, uint32_t column) noexcept {
    return FactOf(format, [&](const frame::Format& found) {
        return found.family == frame::Family::Colour ? '\0' : frame::FilterAt(found, row, column);
    });
}
