#include "tools/frames/Formats.h"

#include "tools/ToolError.h"

namespace kvx::tool {

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

frame::Format RequireFormat(const std::string& name) {
    try {
        return frame::FormatByName(name);
    } catch (const frame::Error& error) {
        // The table also has formats, such as YUV, that no frame has.
        if (KvxPixelFormat_ByName(name.c_str()) != nullptr) {
            Fail(ExitCode::Usage, "{}: neither frames nor converted pictures have this format", name);
        }
        Fail(ExitCode::Usage, "{} 'kvx-demosaic formats' lists the library's", error.what());
    }
}

frame::Format RequireFrameFormat(const std::string& option, const std::string& name) {
    const frame::Format format = RequireFormat(name);
    if (!frame::IsSource(format)) {
        Fail(ExitCode::Usage, "{} {}: frames are mono, Bayer (8 to 16 bits) or TrueSense (8 to 14 bits)", option, name);
    }
    return format;
}

bool IsConvertDestination(const frame::Format& format) {
    return frame::IsDestination(format) && frame::SamplesPerPixel(format) == 3;
}

}  // namespace kvx::tool
