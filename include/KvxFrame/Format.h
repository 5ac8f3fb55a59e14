/**
 * @file
 * Pixel formats of camera frames and pictures, by whatever name or number a camera, a driver or a framework gives them.
 *
 * A Format says what the samples are; the naming schemes are ways to write it down. Functions here keep no state and
 * may run in any number of threads. A format made by hand, rather than by name, is checked wherever it is used.
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

/** What a pixel is. */
enum class Family : uint8_t {
    Mono,       ///< one sample, no colour filter
    Bayer,      ///< one sample behind a filter of a 2x2 tile
    TrueSense,  ///< one sample behind a filter of a 4x4 tile, half of which is clear ("sparse colour filter")
    Colour      ///< three or four samples
};

/** How samples of a given depth lie in memory. */
enum class Layout : uint8_t {
    Plain,       ///< bytes for 8 bits, else little-endian 16-bit words with the value in the low bits
    MsbAligned,  ///< little-endian 16-bit words with the value in the high bits
    BigEndian,   ///< big-endian 16-bit words with the value in the low bits
    Pfnc,        ///< PFNC's 10p, 12p, 14p: no gaps, the least significant bit first
    GigE,        ///< GigE Vision's "Packed" of 10 or 12 bits: two samples in three bytes
    Mipi         ///< MIPI CSI-2's RAW10, RAW12, RAW14: high bytes first, then the low bits
};

/** Order of the samples of a colour pixel in memory. A fourth sample is alpha (opaque in every result) or a filler. */
enum class Order : uint8_t { Rgb, Bgr, Rgba, Bgra, Rgbx, Bgrx };

/** A pixel format. Default: "Mono8". */
struct Format {
    Family family = Family::Mono;   ///< what a pixel is
    uint8_t bits = 8;               ///< significant bits of a sample: 8, 10, 12, 14 or 16
    Layout layout = Layout::Plain;  ///< always Plain for 8 bits and for colour
    /**
     * Place of the frame's first pixel in the tile of its family, row by row: 0 to 3 in "R G / G B", 0 to 15 in
     * "W B W G / B W G W / W G W R / G W R W" (PixelTypeToTruesenseGrid()). 0 for the others.
     */
    uint8_t phase = 0;
    Order order = Order::Rgb;  ///< of colour; Rgb for the others
};
/** Whether all fields are equal. */
constexpr bool operator==(const Format& a, const Format& b) noexcept {
    return a.family == b.family && a.bits == b.bits && a.layout == b.layout && a.phase == b.phase && a.order == b.order;
}
/** Whether a field differs. */
constexpr bool operator!=(const Format& a, const Format& b) noexcept {
    return !(a == b);
}

/** Who uses a name. */
enum class Scheme : uint8_t {
    Library,  ///< this library's table (KvxPixelFormat.h): "BayerRG12", "TrueSense_BGGR_WBBW_0_12"
    Pfnc,     ///< the machine-vision standard: "BayerRG12p", "Mono8", "SCF1WBWG12": a tile's upper left sites first
    /**
     * This layer's own, for what no standard names: a mosaic of any phase by its rows of filters, bits and layout
     * ("CFA_RG_GB_12", "CFA_WBWG_BWGW_WGWR_GWRW_12p"; "msb", "be", "mipi", "Packed"), "Mono12msb" and its like.
     */
    Frame,
    GStreamer,  ///< "rggb", "rggb12le", "GRAY8", "RGBx", "RGBA64_LE"
    V4l2,       ///< four characters: "RGGB", "RG12", "pRCC"; case matters: "pGCC" and "pgCC" are different mosaics
    /**
     * "COLOR_BayerBG2BGR", "cv2.COLOR_BayerRGGB2RGB_EA": the sensor's mosaic that such a conversion is for. Beware: the
     * two letters are those of the second row, second and third column, so that OpenCV's BG is everybody else's RG.
     * Taking the one for the other swaps red and blue. Names with four letters are read from the corner, as usual.
     */
    OpenCv
};

/** One name of a format. */
struct FormatName {
    Scheme scheme;     ///< who uses it
    std::string name;  ///< as it is written there
};

/**
 * The format with a name of any scheme.
 *
 * Exactly as written first; otherwise without regard to case, where that leaves one format. What two schemes write
 * alike means the same format, with one exception: "RGB16" and "BGR16" are 16 bits per sample here, not GStreamer's
 * 5-6-5. OpenCV's names say nothing of the depth and stand for 8 bits; see WithBits().
 *
 * @throws Error (0x80070002) naming the nearest names
 */
KVX_API Format FormatByName(std::string_view name);

/** The same without exceptions. */
KVX_API std::optional<Format> FindFormat(std::string_view name);

/** The format with a 32-bit code of PFNC (as in GenICam's "PixelFormat") or nothing. */
KVX_API std::optional<Format> FormatByPfncCode(uint32_t code);
/** The format with a pixel-type code of the library (KvxPixelType) or nothing. */
KVX_API std::optional<Format> FormatByLibraryCode(uint32_t pixelType);
/** The format with a V4L2 code (v4l2_fourcc(a, b, c, d): the first character in the low byte) or nothing. */
KVX_API std::optional<Format> FormatByFourcc(uint32_t fourcc);

/** PFNC's code of a format, or nothing where PFNC has none (other phases than 0 of TrueSense, MIPI, ...). */
KVX_API std::optional<uint32_t> PfncCode(const Format& format);
/** The library's pixel-type code, or nothing. */
KVX_API std::optional<uint32_t> LibraryCode(const Format& format);
/** V4L2's code, or nothing. */
KVX_API std::optional<uint32_t> Fourcc(const Format& format);

/** The format's best-known name: the library's where it has one, else PFNC's, this layer's, GStreamer's. */
KVX_API std::string Name(const Format& format);

/** All names of a format, in the order of Scheme. */
KVX_API std::vector<FormatName> NamesOf(const Format& format);

/** Every format that has a name: what a listing shows. The reference lives as long as the program. */
KVX_API const std::vector<Format>& AllFormats();

/** Whether the fields fit together and name a format that AllFormats() has. */
KVX_API bool IsValid(const Format& format);

/** A mosaic or mono format: what Convert() reads. TrueSense of 16 bits is named, but has no conversion. */
KVX_API bool IsSource(const Format& format);

/** A colour format: what Convert() makes. Every source can become every destination. */
KVX_API bool IsDestination(const Format& format);

/** The same samples with another depth; 8 bits become Plain. Not checked: see IsValid(). */
KVX_API Format WithBits(Format format, uint8_t bits);

/** The same samples as bytes or right-aligned little-endian words. */
KVX_API Format Unpacked(Format format);

/** Rows and columns after which the mosaic repeats: 2, 4; 1 for mono and colour. */
KVX_API uint32_t TileSide(const Format& format);

/** 'R', 'G', 'B' or 'W' (clear) at a site of a mosaic; 'Y' of a mono frame. Not for colour. */
KVX_API char FilterAt(const Format& format, uint32_t row, uint32_t column);

/** Samples of a pixel: 1, 3 or 4. */
KVX_API uint32_t SamplesPerPixel(const Format& format);

/** Bytes of a row of `width` pixels without padding, a last begun byte included. */
KVX_API uint64_t RowBytes(const Format& format, uint32_t width);

/** The value of white, 2^bits - 1. */
constexpr uint32_t White(const Format& format) noexcept {
    return (1u << format.bits) - 1;
}

}  // namespace kvx::frame

#endif
