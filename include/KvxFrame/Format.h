/**
 * @file
 * Pixel formats of camera frames and pictures, with the names and codes of cameras, drivers and frameworks.
 *
 * A Format describes the samples; naming schemes are ways to write it. Functions here keep no state: any number of
 * threads may call them. Functions of other headers check formats whose fields were set by hand.
 */
#ifndef KVXFRAME_FORMAT_H
#define KVXFRAME_FORMAT_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "KvxFrame/Error.h"

namespace kvx::frame {

/** Kind of a pixel. */
enum class Family : uint8_t {
    Mono,       ///< one sample, no colour filter
    Bayer,      ///< one sample behind a filter of a 2x2 tile
    TrueSense,  ///< one sample behind a filter of a 4x4 tile, half of which is clear ("sparse colour filter")
    Colour      ///< three or four samples
};

/** How samples are stored in memory. */
enum class Layout : uint8_t {
    Plain,       ///< bytes for 8 bits, otherwise little-endian 16-bit words, right-aligned
    MsbAligned,  ///< little-endian 16-bit words, left-aligned
    BigEndian,   ///< big-endian 16-bit words, right-aligned
    Pfnc,        ///< PFNC 10p, 12p, 14p: no gaps, least significant bit first
    GigE,        ///< GigE Vision 10Packed, 12Packed: two samples in three bytes
    Mipi         ///< MIPI CSI-2 RAW10, RAW12, RAW14: high bytes first, then the low bits
};

/** Order of the samples of a colour pixel in memory. The fourth sample is alpha or a filler; results are opaque. */
enum class Order : uint8_t { Rgb, Bgr, Rgba, Bgra, Rgbx, Bgrx };

/** A pixel format. Default: "Mono8". */
struct Format {
    Family family = Family::Mono;   ///< kind of a pixel
    uint8_t bits = 8;               ///< significant bits of a sample: 8, 10, 12, 14 or 16
    Layout layout = Layout::Plain;  ///< always Plain for 8 bits and for colour
    /**
     * Position of the frame's first pixel in the tile of its family, counted row by row: 0 to 3 in "R G / G B", 0 to 15
     * in "W B W G / B W G W / W G W R / G W R W" (PixelTypeToTruesenseGrid()). 0 for the others.
     */
    uint8_t phase = 0;
    Order order = Order::Rgb;  ///< of colour; Rgb for the others
};
/** Compares all fields. */
constexpr bool operator==(const Format& a, const Format& b) noexcept {
    return a.family == b.family && a.bits == b.bits && a.layout == b.layout && a.phase == b.phase && a.order == b.order;
}
/** Compares all fields. */
constexpr bool operator!=(const Format& a, const Format& b) noexcept {
    return !(a == b);
}

/** Naming scheme. */
enum class Scheme : uint8_t {
    Library,  ///< this library's table (KvxPixelFormat.h): "BayerRG12", "TrueSense_BGGR_WBBW_0_12"
    Pfnc,     ///< Pixel Format Naming Convention: "BayerRG12p", "Mono8", "SCF1WBWG12"
    /**
     * This layer's own names, for formats without a standard name: a mosaic of any phase by its rows of filters, bits
     * and layout ("CFA_RG_GB_12", "CFA_WBWG_BWGW_WGWR_GWRW_12p"; "msb", "be", "mipi", "Packed"), or "Mono12msb".
     */
    Frame,
    GStreamer,  ///< "rggb", "rggb12le", "GRAY8", "RGBx", "RGBA64_LE"
    V4l2,       ///< four characters: "RGGB", "RG12", "pRCC"; case matters: "pGCC" and "pgCC" are different mosaics
    /**
     * "COLOR_BayerBG2BGR", "cv2.COLOR_BayerRGGB2RGB_EA": the mosaic that this conversion expects. Caution: OpenCV's two
     * letters name the second and third column of the second row, so OpenCV's BG is RG in all other schemes. Confusing
     * them swaps red and blue. Names with four letters start at the corner, as usual.
     */
    OpenCv
};

/** One name of a format. */
struct FormatName {
    Scheme scheme;     ///< where it is used
    std::string name;  ///< as it is written there
};

/**
 * The format with a name of any scheme.
 *
 * An exact match comes first; otherwise case is ignored, if that leaves one format. Names that occur in two schemes
 * mean the same format, with one exception: "RGB16" and "BGR16" have 16 bits per sample here, not GStreamer's 5-6-5.
 * OpenCV's names do not include the depth and stand for 8 bits; see WithBits().
 *
 * @throws Error 0x80070002 for an unknown name; what() suggests similar names
 */
KVX_API Format FormatByName(std::string_view name);

/** The same, with std::nullopt for an unknown name. */
KVX_API std::optional<Format> FindFormat(std::string_view name);

/** The format with a 32-bit PFNC code, such as GenICam's "PixelFormat", or std::nullopt. */
KVX_API std::optional<Format> FormatByPfncCode(uint32_t code);
/** The format with a pixel-type code of the library (KvxPixelType), or std::nullopt. */
KVX_API std::optional<Format> FormatByLibraryCode(uint32_t pixelType);
/** The format with a V4L2 code (v4l2_fourcc(a, b, c, d): first character in the low byte), or std::nullopt. */
KVX_API std::optional<Format> FormatByFourcc(uint32_t fourcc);

/** The PFNC code of a format, or std::nullopt if it has none (TrueSense phases other than 0, MIPI, ...). */
KVX_API std::optional<uint32_t> PfncCode(const Format& format);
/** The library's pixel-type code of a format, or std::nullopt. */
KVX_API std::optional<uint32_t> LibraryCode(const Format& format);
/** The V4L2 code of a format, or std::nullopt. */
KVX_API std::optional<uint32_t> Fourcc(const Format& format);

/** The preferred name of a format: the first in the order library, PFNC, this layer, GStreamer. */
KVX_API std::string Name(const Format& format);

/** All names of a format, in the order of Scheme. */
KVX_API std::vector<FormatName> NamesOf(const Format& format);

/** All valid formats. The reference stays valid. */
KVX_API const std::vector<Format>& AllFormats();

/** Whether the fields fit each other: whether AllFormats() has this format. */
KVX_API bool IsValid(const Format& format);

/** Whether Convert() can read it: mono, Bayer, or TrueSense up to 14 bits. */
KVX_API bool IsSource(const Format& format);

/** Whether Convert() can write it: a colour format. Every source can be converted to every destination. */
KVX_API bool IsDestination(const Format& format);

/** The same format with another depth; Plain for 8 bits. The result is not checked, see IsValid(). */
KVX_API Format WithBits(Format format, uint8_t bits);

/** The same format in the Plain layout. */
KVX_API Format Unpacked(Format format);

/** Rows and columns of the tile: 2 for Bayer, 4 for TrueSense, 1 for mono and colour. */
KVX_API uint32_t TileSide(const Format& format);

/** The filter at a site: 'R', 'G', 'B' or 'W' (clear); 'Y' for mono. Not for colour. */
KVX_API char FilterAt(const Format& format, uint32_t row, uint32_t column);

/**
 * The place of a site's filter among the four of a family: red, green in red rows, green in blue rows, blue for Bayer;
 * red, green, blue, clear for TrueSense; mono sites have the fourth. The site may lie outside a frame.
 */
KVX_API size_t FilterIndex(const Format& format, uint32_t row, uint32_t column);

/** Samples of a pixel: 1, 3 or 4. */
KVX_API uint32_t SamplesPerPixel(const Format& format);

/** Bytes of a row of `width` pixels without padding, rounded up to whole bytes. */
KVX_API uint64_t RowBytes(const Format& format, uint32_t width);

/** The sample value of white, 2^bits - 1. */
constexpr uint32_t White(const Format& format) noexcept {
    return (1u << format.bits) - 1;
}

/** Whether blue is the first sample of a colour pixel, and not red. */
constexpr bool IsBlueFirst(const Format& format) noexcept {
    return format.order == Order::Bgr || format.order == Order::Bgra || format.order == Order::Bgrx;
}

}  // namespace kvx::frame

#endif
