#include "tools/files/CameraRaw.h"

#include <libraw/libraw.h>

#include <algorithm>
#include <array>
#include <memory>
#include <opencv2/core.hpp>
#include <string_view>

#include "tools/ToolError.h"
#include "tools/files/CameraRawFacts.h"
#include "tools/files/PictureEncoder.h"
#include "tools/files/RawLayout.h"

namespace kvx::tool {
namespace {

using namespace std::string_view_literals;

/** Of samples; the largest sensors have 150 million. */
constexpr unsigned kMaximumMegabytes = 1024;

/** Beginnings of camera raw files. Without one LibRaw would recognise headerless files by their size. */
constexpr std::array kSignatures = {"II\x55\0"sv,        "IIRO"sv,    "IIRS"sv, "MMOR"sv, "II\x1a\0\0\0HEAP"sv,
                                    "FUJIFILMCCD-RAW"sv, "\0MRM"sv,   "FOVb"sv, "IIII"sv, "MMMM"sv,
                                    "II\x2a\0"sv,        "MM\0\x2a"sv};

bool StartsWithAny(std::string_view text, const auto& signatures) {
    return std::ranges::any_of(signatures, [text](auto signature) { return text.starts_with(signature); });
}

/** Runs a step of LibRaw, which has a few places that throw. @return a code of LibRaw */
template <typename Step>
int CodeOf(const Step& step) {
    try {
        return step();
    } catch (const LibRaw_exceptions&) {
        return LIBRAW_DATA_ERROR;
    }
}

/** Unpacks the samples of an open file, which must have a Bayer mosaic. */
class MosaicReader {
public:
    MosaicReader(LibRaw& raw, const std::string& name)
        : m_raw(raw), m_data(raw.imgdata), m_name(name), m_camera(Camera()) {}

    CameraRaw Read() {
        RequireBayer();
        Unpack();
        CheckFrameSize(m_data.sizes.width, m_data.sizes.height, m_name);
        const cv::Mat samples = VisibleSamples();
        double largest = 0;
        cv::minMaxLoc(samples, nullptr, &largest);
        const auto white = std::min(m_data.color.maximum, 65535u);
        const frame::Format format = FormatHolding(std::max<uint32_t>(white, static_cast<uint32_t>(largest)));
        CameraRaw result{MakeRawFrame(format, samples.size()), {}};
        samples.convertTo(result.frame.samples, result.frame.samples.type());
        result.known = FactsOf(m_raw, format);
        result.known.whiteLevel = frame::Levels(white);
        return result;
    }

private:
    std::string Camera() const {
        return fmt::format("{} {}", m_data.idata.make, m_data.idata.model);
    }

    void RequireBayer() const {
        const auto& idata = m_data.idata;
        const bool is2x2 = idata.filters == (idata.filters & 0xff) * 0x01010101u;
        const char* kind = idata.is_foveon           ? "has the three layers of a Foveon sensor"
                           : idata.filters == 0      ? "has no mosaic (sRAW, linear DNG or a monochrome sensor)"
                           : idata.filters == 9      ? "has the 6x6 mosaic of an X-Trans sensor"
                           : m_raw.is_fuji_rotated() ? "has a mosaic that is rotated by 45 degrees"
                           : idata.colors != 3       ? "has a mosaic of four colours"
                           : !is2x2 || !Phase()      ? "has a mosaic that is not Bayer's"
                                                     : nullptr;
        if (kind != nullptr) {
            Fail(ExitCode::Input, "{}: the file of a {} {}: only Bayer mosaics can be converted", m_name, m_camera,
                 kind);
        }
    }

    char FilterAt(int row, int column) const {
        return m_data.idata.cdesc[m_raw.COLOR(row, column)];
    }

    /** The phase with the file's colours. */
    std::optional<uint8_t> Phase() const {
        for (uint8_t phase = 0; phase < 4; ++phase) {
            const frame::Format format{.family = frame::Family::Bayer, .phase = phase};
            bool isEqual = true;
            for (int site = 0; site < 4; ++site) {
                isEqual &= frame::FilterAt(format, site / 2, site % 2) == FilterAt(site / 2, site % 2);
            }
            if (isEqual) return phase;
        }
        return std::nullopt;
    }

    frame::Format FormatHolding(uint32_t largest) const {
        frame::Format format{.family = frame::Family::Bayer, .phase = *Phase()};
        while (frame::White(format) < largest) format.bits += 2;
        return format;
    }

    void Unpack() {
        m_raw.set_dataerror_handler(nullptr, nullptr);  // it prints
        const int code = CodeOf([this] { return m_raw.unpack(); });
        if (code == LIBRAW_TOO_BIG || code == LIBRAW_UNSUFFICIENT_MEMORY) {
            Fail(ExitCode::Frame, "{}: more than {} MB of samples: no sensor is that large", m_name, kMaximumMegabytes);
        }
        if (code != LIBRAW_SUCCESS || m_raw.error_count() > 0) {
            Fail(ExitCode::Input, "{}: is damaged: LibRaw cannot decode the samples of this {} file", m_name, m_camera);
        }
        const auto& sizes = m_data.sizes;
        const bool fits =
            sizes.left_margin + sizes.width <= sizes.raw_width && sizes.top_margin + sizes.height <= sizes.raw_height;
        if (m_data.rawdata.raw_image == nullptr || !fits) {
            Fail(ExitCode::Input, "{}: the samples of this {} file are no whole numbers, or incomplete", m_name,
                 m_camera);
        }
    }

    /** Without the masked border. */
    cv::Mat VisibleSamples() const {
        const auto& sizes = m_data.sizes;
        const cv::Mat all(sizes.raw_height, sizes.raw_width, CV_16UC1, m_data.rawdata.raw_image, sizes.raw_pitch);
        return all(cv::Rect(sizes.left_margin, sizes.top_margin, sizes.width, sizes.height));
    }

    LibRaw& m_raw;
    libraw_data_t& m_data;
    const std::string& m_name;
    std::string m_camera;
};

}  // namespace

bool MayBeCameraRaw(const Bytes& start) {
    const std::string_view text(reinterpret_cast<const char*>(start.data()), start.size());
    return StartsWithAny(text, kSignatures) || text.substr(std::min<size_t>(4, text.size())).starts_with("ftypcrx ");
}

std::optional<CameraRaw> DecodeCameraRaw(const Bytes& content, const std::string& path, const std::string& name) {
    if (!MayBeCameraRaw(content)) {
        return std::nullopt;
    }
    const auto raw = std::make_unique<LibRaw>();  // hundreds of kilobytes
    raw->imgdata.params.max_raw_memory_mb = kMaximumMegabytes;
    // LibRaw only reads the buffer.
    const int code = CodeOf([&] { return raw->open_buffer(const_cast<uint8_t*>(content.data()), content.size()); });
    const std::string extension = LowerExtension(path);
    if (code != LIBRAW_SUCCESS && extension == ".dng") {
        Fail(ExitCode::Input, "{}: is damaged, or no DNG file that LibRaw {} knows", name, LibRaw::version());
    }
    const bool isPicture = raw->imgdata.idata.dng_version == 0 && (extension == ".tif" || extension == ".tiff");
    if (code != LIBRAW_SUCCESS || isPicture) {
        return std::nullopt;
    }
    return MosaicReader(*raw, name).Read();
}

}  // namespace kvx::tool
