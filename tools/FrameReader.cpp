#include "tools/FrameReader.h"

#include "KvxFrame/SampleDepth.h"
#include "tools/Console.h"
#include "tools/FrameConversion.h"
#include "tools/FrameName.h"
#include "tools/InputFile.h"
#include "tools/PictureDecoder.h"
#include "tools/RawLayout.h"
#include "tools/ToolError.h"

namespace kvx::tool {
namespace {

/** Fills what the user left open from the file's name, and remembers what that was. */
class NameInference {
public:
    NameInference(const std::string& path, const FrameRequest& request) : m_request(request) {
        if (path != "-") {
            m_fromName = ParseFrameName(path);
        }
    }

    const PixelFormat* Format() {
        if (m_request.format != nullptr || m_fromName.format == nullptr) {
            return m_request.format;
        }
        Remember(fmt::format("format {}", m_fromName.format->name));
        return m_fromName.format;
    }

    std::optional<uint64_t> Width() {
        return Dimension("width", m_request.width, &FrameSize::width);
    }

    std::optional<uint64_t> Height() {
        return Dimension("height", m_request.height, &FrameSize::height);
    }

    const std::string& Inferred() const {
        return m_inferred;
    }

private:
    std::optional<uint64_t> Dimension(const char* word, std::optional<uint64_t> given, uint64_t FrameSize::*member) {
        if (given || !m_fromName.size) {
            return given;
        }
        const uint64_t value = *m_fromName.size.*member;
        Remember(fmt::format("{} {}", word, value));
        return value;
    }

    void Remember(const std::string& text) {
        m_inferred += (m_inferred.empty() ? "" : ", ") + text;
    }

    const FrameRequest& m_request;
    FrameName m_fromName;
    std::string m_inferred;
};

const PixelFormat& RequireSource(const PixelFormat* format, const std::string& name) {
    if (format == nullptr) {
        Fail(ExitCode::Usage, "{}: neither --format nor the file name tells the format: add --format, say BayerRG8",
             name);
    }
    if (!IsConvertSource(*format)) {
        Fail(ExitCode::Usage, "{}: {} cannot be converted: 'kvx-demosaic formats' shows the sources of convert", name,
             format->name);
    }
    return *format;
}

void RequireFileSize(const cv::Mat& pixels, const FrameRequest& request, const std::string& name) {
    if (request.stride || request.skipBytes) {
        Fail(ExitCode::Usage, "{}: is a picture file with a layout of its own: leave out --stride and --skip-bytes",
             name);
    }
    const uint64_t width = pixels.cols;
    const uint64_t height = pixels.rows;
    if (request.width.value_or(width) != width || request.height.value_or(height) != height) {
        Fail(ExitCode::Frame, "{}: is {}x{} pixels by its header, not {}x{}: leave out --width and --height", name,
             width, height, request.width.value_or(width), request.height.value_or(height));
    }
}

RawFrame FrameFromPicture(const Bytes& content, const PixelFormat& format, const FrameRequest& request,
                          const std::string& name) {
    const cv::Mat pixels = DecodePicture(content, name).pixels;
    if (pixels.channels() != 1) {
        Fail(ExitCode::Input, "{}: is a colour picture, not a raw frame: 'kvx-demosaic mosaic' makes one of it", name);
    }
    RequireFileSize(pixels, request, name);
    if (pixels.elemSize() != BytesPerSample(format)) {
        Fail(ExitCode::Frame, "{}: has {}-bit samples, which {} has not: give a --format of {} bits", name,
             8 * pixels.elemSize(), format.name, pixels.elemSize() == 1 ? "8" : "10 to 16");
    }
    CheckFrameSize(pixels.cols, pixels.rows, name);
    return {&format, pixels};
}

RawFrame FrameFromSamples(const Bytes& content, const PixelFormat& format, NameInference& inference,
                          const FrameRequest& request, const std::string& name) {
    const std::optional<uint64_t> width = inference.Width();
    const std::optional<uint64_t> height = inference.Height();
    if (!width || !height) {
        Fail(ExitCode::Usage, "{}: is no PGM, PNG or TIFF file and its name tells no size: add --width and --height",
             name);
    }
    const uint64_t stride = request.stride.value_or(*width * BytesPerSample(format));
    return CutFrame(content, {&format, *width, *height, stride, request.skipBytes.value_or(0)}, name);
}

}  // namespace

FrameInput ReadFrame(const std::string& path, const FrameRequest& request) {
    const std::string name = InputName(path);
    NameInference inference(path, request);
    const PixelFormat& format = RequireSource(inference.Format(), name);
    const Bytes content = ReadInput(path);
    RawFrame frame = IsPictureFile(content) ? FrameFromPicture(content, format, request, name)
                                            : FrameFromSamples(content, format, inference, request, name);
    OrExit(ExitCode::Frame, name, [&] { frame::CheckSampleDepth(ViewOf(frame)); });
    return {std::move(frame), inference.Inferred()};
}

}  // namespace kvx::tool
