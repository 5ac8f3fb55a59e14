#include "tools/files/Dng.h"

#include <sys/mman.h>
#include <tiffio.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <opencv2/core.hpp>

#include "KvxFrame/CameraProfile.h"
#include "tools/ToolError.h"
#include "tools/files/FileDescriptor.h"
#include "tools/files/InputFile.h"

namespace kvx::tool {
namespace {

constexpr uint32_t kNoiseProfile = 51041;  // TIFFTAG_ of DNG 1.3, which libtiff does not know
constexpr uint16_t kD65 = 21;              // of the Exif light sources

/** From linear sRGB to XYZ: the primaries and the white (D65) of ITU-R BT.709. */
const cv::Matx33d kXyzOfSrgb(0.412453, 0.357580, 0.180423, 0.212671, 0.715160, 0.072169, 0.019334, 0.119193, 0.950227);

struct DngColours {
    std::array<float, 9> matrix;   ///< from XYZ to sensor colours
    std::array<float, 3> neutral;  ///< sensor colours of white, the largest 1
    float exposure;                ///< in EV, since readers make the largest of `neutral` white
};

DngColours ColoursOf(const Sidecar& known, const std::string& name) {
    const frame::Gains gains = known.gains.value_or(frame::Gains());
    const cv::Matx33d toSrgb = known.matrix ? cv::Matx33d(known.matrix->data()) : cv::Matx33d::eye();
    bool isInvertible = false;
    const cv::Matx33d inverse = toSrgb.inv(cv::DECOMP_LU, &isInvertible);
    const cv::Matx33d ofSrgb = cv::Matx33d::diag({1 / gains.red, 1 / gains.green, 1 / gains.blue}) * inverse;
    const cv::Vec3d white = ofSrgb * cv::Vec3d(1, 1, 1);
    if (!isInvertible || !(std::min({white[0], white[1], white[2]}) > 0)) {
        Fail(ExitCode::Usage, "{}: a DNG file cannot hold a colour matrix that gives no sensor colours for white",
             name);
    }
    const double largest = std::max({white[0], white[1], white[2]});
    const cv::Matx33d ofXyz = ofSrgb * kXyzOfSrgb.inv() * (1 / largest);
    DngColours colours{};
    std::copy_n(ofXyz.val, 9, colours.matrix.begin());
    std::copy_n((white / largest).val, 3, colours.neutral.begin());
    colours.exposure = static_cast<float>(-std::log2(largest));
    return colours;
}

/** A file in memory, with an open TIFF file in it that does not print messages. */
class TiffFile {
public:
    explicit TiffFile(const std::string& name) : m_name(name), m_file(::memfd_create("dng", MFD_CLOEXEC)) {
        const std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> options(TIFFOpenOptionsAlloc(),
                                                                                       TIFFOpenOptionsFree);
        const auto beQuiet = [](TIFF*, void*, const char*, const char*, va_list) { return 1; };
        TIFFOpenOptionsSetErrorHandlerExtR(options.get(), beQuiet, nullptr);
        TIFFOpenOptionsSetWarningHandlerExtR(options.get(), beQuiet, nullptr);
        m_tiff.reset(TIFFFdOpenExt(::dup(m_file.Get()), "dng", "wl", options.get()));
        Check(m_tiff != nullptr);
    }

    TIFF* Get() const {
        return m_tiff.get();
    }

    template <typename... Values>
    void Set(uint32_t tag, const Values&... values) {
        Check(TIFFSetField(m_tiff.get(), tag, values...) == 1);
    }

    void WriteRow(const uint16_t* samples, uint32_t row) {
        Check(TIFFWriteScanline(m_tiff.get(), const_cast<uint16_t*>(samples), row) == 1);
    }

    Bytes Finish() {
        Check(TIFFWriteDirectory(m_tiff.get()) == 1);
        m_tiff.reset();
        Bytes content(static_cast<size_t>(::lseek(m_file.Get(), 0, SEEK_END)));
        Check(::pread(m_file.Get(), content.data(), content.size(), 0) == std::ssize(content));
        return content;
    }

private:
    void Check(bool isDone) const {
        if (!isDone) Fail(ExitCode::Output, "{}: no DNG file: libtiff cannot write it", m_name);
    }

    const std::string& m_name;
    FileDescriptor m_file;
    std::unique_ptr<TIFF, decltype(&TIFFClose)> m_tiff{nullptr, TIFFClose};
};

void SetLayout(TiffFile& file, const RawFrame& frame) {
    file.Set(TIFFTAG_SUBFILETYPE, 0u);
    file.Set(TIFFTAG_IMAGEWIDTH, static_cast<uint32_t>(frame.samples.cols));
    file.Set(TIFFTAG_IMAGELENGTH, static_cast<uint32_t>(frame.samples.rows));
    file.Set(TIFFTAG_ROWSPERSTRIP, static_cast<uint32_t>(frame.samples.rows));
    file.Set(TIFFTAG_BITSPERSAMPLE, 16);
    file.Set(TIFFTAG_SAMPLESPERPIXEL, 1);
    file.Set(TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    file.Set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    file.Set(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_CFA);
    constexpr std::array<uint16_t, 2> kTile = {2, 2};
    file.Set(TIFFTAG_CFAREPEATPATTERNDIM, kTile.data());
    std::array<uint8_t, 4> colours{};
    for (uint32_t site = 0; site < 4; ++site) {
        const char filter = frame::FilterAt(frame.format, site / 2, site % 2);
        colours[site] = filter == 'R' ? 0 : filter == 'G' ? 1 : 2;
    }
    file.Set(TIFFTAG_CFAPATTERN, 4, colours.data());
}

void SetLevels(TiffFile& file, const RawFrame& frame, const frame::Levels& black, uint32_t white) {
    constexpr std::array<uint16_t, 2> kTile = {2, 2};
    file.Set(TIFFTAG_BLACKLEVELREPEATDIM, kTile.data());
    std::array<float, 4> levels{};
    for (uint32_t site = 0; site < 4; ++site) {
        levels[site] = static_cast<float>(black.ofFilters[frame::FilterIndex(frame.format, site / 2, site % 2)]);
    }
    file.Set(TIFFTAG_BLACKLEVEL, 4, levels.data());
    file.Set(TIFFTAG_WHITELEVEL, 1, &white);
}

/** In DNG, variance and signal are relative to the range from black to white. */
void SetNoise(TiffFile& file, const frame::NoiseLine& noise, double range12) {
    const TIFFFieldInfo field = {kNoiseProfile,
                                 TIFF_VARIABLE,
                                 TIFF_VARIABLE,
                                 TIFF_DOUBLE,
                                 FIELD_CUSTOM,
                                 1,
                                 1,
                                 const_cast<char*>("NoiseProfile")};
    TIFFMergeFieldInfo(file.Get(), &field, 1);
    const std::array<double, 2> profile = {noise.slope / range12, noise.intercept / (range12 * range12)};
    file.Set(kNoiseProfile, 2, profile.data());
}

}  // namespace

Bytes EncodeDng(const RawFrame& frame, const Sidecar& known, const std::optional<frame::SensorNoise>& noise,
                const std::string& name) {
    if (frame.format.family != frame::Family::Bayer) {
        Fail(ExitCode::Usage, "{}: DNG files hold Bayer mosaics, not {}: write a .raw or .pgm file", name,
             frame::Name(frame.format));
    }
    const DngColours colours = ColoursOf(known, name);
    const frame::Levels black = known.blackLevel.value_or(0);
    const double largest = frame::White(frame.format);
    const double white = known.whiteLevel ? std::ranges::min(known.whiteLevel->ofFilters) : largest;
    TiffFile file(name);
    SetLayout(file, frame);
    SetLevels(file, frame, black, static_cast<uint32_t>(std::lround(white)));
    file.Set(TIFFTAG_DNGVERSION, std::array<uint8_t, 4>{1, 4, 0, 0}.data());
    file.Set(TIFFTAG_DNGBACKWARDVERSION, std::array<uint8_t, 4>{1, 1, 0, 0}.data());
    file.Set(TIFFTAG_MAKE, "KvxDemosaicing");
    file.Set(TIFFTAG_MODEL, "frame");
    file.Set(TIFFTAG_UNIQUECAMERAMODEL, "KvxDemosaicing frame");
    file.Set(TIFFTAG_ORIENTATION, static_cast<int>(known.orientation.value_or(1)));
    file.Set(TIFFTAG_COLORMATRIX1, 9, colours.matrix.data());
    file.Set(TIFFTAG_CALIBRATIONILLUMINANT1, kD65);
    file.Set(TIFFTAG_ASSHOTNEUTRAL, 3, colours.neutral.data());
    file.Set(TIFFTAG_BASELINEEXPOSURE, static_cast<double>(colours.exposure));
    if (noise) SetNoise(file, noise->colour, (white - black.ofFilters[1]) / largest * 4095);
    cv::Mat words;
    frame.samples.convertTo(words, CV_16U);
    for (int row = 0; row < words.rows; ++row) file.WriteRow(words.ptr<uint16_t>(row), static_cast<uint32_t>(row));
    return file.Finish();
}

std::string DngNote(const Sidecar& known) {
    const char* missing = known.gains && known.matrix ? nullptr
                          : known.gains               ? "colour matrix"
                          : known.matrix              ? "white balance"
                                                      : "white balance and colour matrix";
    return missing == nullptr ? "" : fmt::format("no {} known: the DNG file has a neutral one", missing);
}

}  // namespace kvx::tool
