#include "tools/Formats.h"

#include <algorithm>
#include <cstring>

#include "KvxFrame/Format.h"
#include "tools/ToolError.h"

namespace kvx::tool {
namespace {

enum class ColourModel : uint32_t { Mono = 1, Rgb = 2, Bayer = 3, TrueSense = 4 };

ColourModel ModelOf(const PixelFormat& format) {
    return static_cast<ColourModel>(format.pixelType >> 24);
}

uint32_t PackingOf(const PixelFormat& format) {
    return (format.pixelType >> 12) & 0xF;
}

bool IsUnpacked(const PixelFormat& format) {
    return PackingOf(format) == 0;
}

}  // namespace

const std::vector<const PixelFormat*>& AllFormats() {
    static const std::vector<const PixelFormat*> formats = [] {
        std::vector<const PixelFormat*> rows;
        for (uint32_t index = 0; index < KVX_PIXEL_FORMAT_COUNT; ++index) {
            rows.push_back(KvxPixelFormat_ByIndex(index));
        }
        return rows;
    }();
    return formats;
}

const PixelFormat& RequireFormat(const std::string& name) {
    if (const PixelFormat* format = KvxPixelFormat_ByName(name.c_str())) {
        return *format;
    }
    try {
        const std::optional<uint32_t> code = frame::LibraryCode(frame::FormatByName(name));
        if (code) {
            return *KvxPixelFormat_ByCode(*code);
        }
    } catch (const frame::Error& error) {
        Fail(ExitCode::Usage, "{} 'kvx-demosaic formats' lists all", error.what());
    }
    Fail(ExitCode::Usage, "{}: the library has no such format; 'kvx-demosaic formats' lists what it has", name);
}

bool IsUnpackedMosaic(const PixelFormat& format) {
    const ColourModel model = ModelOf(format);
    return IsUnpacked(format) &&
           (model == ColourModel::Mono || model == ColourModel::Bayer || model == ColourModel::TrueSense);
}

bool IsConvertSource(const PixelFormat& format) {
    return IsUnpacked(format) && (ModelOf(format) == ColourModel::Bayer || IsTrueSense(format));
}

bool IsTrueSense(const PixelFormat& format) {
    return ModelOf(format) == ColourModel::TrueSense;
}

bool IsConvertDestination(const PixelFormat& format) {
    return IsUnpacked(format) && ModelOf(format) == ColourModel::Rgb && format.componentCount == 3;
}

bool CanConvert(const PixelFormat& source, const PixelFormat& destination) {
    const uint32_t bits = destination.bitsPerComponent;
    return bits == 8 || bits == source.bitsPerComponent || (bits == 16 && source.bitsPerComponent > 8);
}

bool IsBlueFirst(const PixelFormat& colour) {
    return colour.components[0] == 'B';
}

uint32_t LargestSample(const PixelFormat& format) {
    return (1u << format.bitsPerComponent) - 1;
}

uint32_t BytesPerSample(const PixelFormat& format) {
    return format.bitsPerComponent > 8 ? 2 : 1;
}

const PixelFormat* WithDepth(const PixelFormat& format, uint32_t bits) {
    const auto& formats = AllFormats();
    const auto found = std::find_if(formats.begin(), formats.end(), [&](const PixelFormat* other) {
        return ModelOf(*other) == ModelOf(format) && PackingOf(*other) == PackingOf(format) &&
               other->bitsPerComponent == bits && other->phase == format.phase &&
               std::strcmp(other->components, format.components) == 0;
    });
    return found == formats.end() ? nullptr : *found;
}

}  // namespace kvx::tool
