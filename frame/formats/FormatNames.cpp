// How each naming scheme writes a format.
#include <array>

#include "KvxDemosaicing/KvxPixelFormat.h"
#include "frame/base/Fail.h"
#include "frame/formats/FormatTables.h"

namespace kvx::frame {
namespace {

// By phase, where a table has one entry for each Bayer phase.
constexpr std::array kFirstSites = {"RG", "GR", "GB", "BG"};
constexpr std::array kTiles = {"rggb", "grbg", "gbrg", "bggr"};
// OpenCV looks at the second row and the second and third column.
constexpr std::array kOpenCvSites = {"BG", "GB", "GR", "RG"};
constexpr std::array kOpenCvTiles = {"RGGB", "GRBG", "GBRG", "BGGR"};

// By order.
constexpr std::array kColours = {"RGB", "BGR", "RGBa", "BGRa", "", ""};
constexpr std::array kGStreamerColours = {"RGB", "BGR", "RGBA", "BGRA", "RGBx", "BGRx"};
constexpr std::array kV4l2Colours = {"RGB3", "BGR3", "AB24", "AR24", "XB24", "XR24"};

struct V4l2Row {
    uint8_t bits;
    Layout layout;
    const char* mono;
    std::array<const char*, 4> bayer;  // by phase
};
constexpr std::array kV4l2Rows = {
    V4l2Row{8, Layout::Plain, "GREY", {"RGGB", "GRBG", "GBRG", "BA81"}},
    V4l2Row{10, Layout::Plain, "Y10", {"RG10", "BA10", "GB10", "BG10"}},
    V4l2Row{12, Layout::Plain, "Y12", {"RG12", "BA12", "GB12", "BG12"}},
    V4l2Row{14, Layout::Plain, "Y14", {"RG14", "GR14", "GB14", "BG14"}},
    V4l2Row{16, Layout::Plain, "Y16", {"RG16", "GR16", "GB16", "BYR2"}},
    V4l2Row{10, Layout::Mipi, "Y10P", {"pRAA", "pgAA", "pGAA", "pBAA"}},
    V4l2Row{12, Layout::Mipi, "Y12P", {"pRCC", "pgCC", "pGCC", "pBCC"}},
    V4l2Row{14, Layout::Mipi, "Y14P", {"pREE", "pgEE", "pGEE", "pBEE"}},
};

size_t IndexOf(Order order) {
    return static_cast<size_t>(order);
}

/** What follows the number of bits in PFNC's names, or null for layouts that it does not have. */
const char* PfncSuffix(Layout layout) {
    switch (layout) {
        case Layout::Plain:
            return "";
        case Layout::Pfnc:
            return "p";
        case Layout::GigE:
            return "Packed";
        default:
            return nullptr;
    }
}

const char* FrameSuffix(Layout layout) {
    switch (layout) {
        case Layout::MsbAligned:
            return "msb";
        case Layout::BigEndian:
            return "be";
        case Layout::Mipi:
            return "mipi";
        default:
            return PfncSuffix(layout);
    }
}

/** "Mono" or "BayerRG", which the library and PFNC share. */
std::string MonoOrBayerStem(const Format& format) {
    return format.family == Family::Mono ? "Mono" : fmt::format("Bayer{}", kFirstSites[format.phase]);
}

std::string TrueSenseName(const Format& format) {
    constexpr std::array kStems = {"BGGR_WBBW", "GBRG_WGGW", "GRBG_WGGW", "RGGB_WRRW"};
    const int row = format.phase / 4, column = format.phase % 4;
    const auto* stem = kStems[row / 2 * 2 + column / 2];
    return fmt::format("TrueSense_{}_{}_{}", stem, row % 2 * 2 + column % 2, format.bits);
}

}  // namespace

std::string TileRows(const Format& format) {
    std::string rows;
    for (uint32_t row = 0; row < TileSide(format); ++row) {
        if (row > 0) rows += '_';
        for (uint32_t column = 0; column < TileSide(format); ++column) rows += FilterAt(format, row, column);
    }
    return rows;
}

std::string LibraryName(const Format& format) {
    std::string name;
    if (format.family == Family::TrueSense) {
        if (format.layout == Layout::Plain) name = TrueSenseName(format);
    } else if (format.family == Family::Colour) {
        name = fmt::format("{}{}", kColours[IndexOf(format.order)], format.bits);
    } else if (const char* suffix = PfncSuffix(format.layout)) {
        name = fmt::format("{}{}{}", MonoOrBayerStem(format), format.bits, suffix);
    }
    return KvxPixelFormat_ByName(name.c_str()) ? name : "";
}

std::string PfncName(const Format& format) {
    const char* suffix = PfncSuffix(format.layout);
    if (!suffix) return "";
    switch (format.family) {
        case Family::Mono:
        case Family::Bayer:
            return fmt::format("{}{}{}", MonoOrBayerStem(format), format.bits, suffix);
        case Family::TrueSense:
            // A tile is known by its first row, which begins with a clear site in a row of blue or red.
            if (format.phase % 2 != 0 || format.phase / 4 % 2 != 0 || format.layout == Layout::GigE) return "";
            return fmt::format("SCF1{}{}{}", TileRows(format).substr(0, 4), format.bits, suffix);
        case Family::Colour:
            break;
    }
    const char* colours = kColours[IndexOf(format.order)];
    return *colours ? fmt::format("{}{}", colours, format.bits) : "";
}

std::string FrameName(const Format& format) {
    const bool hasStem = format.family == Family::Mono || format.family == Family::Bayer;
    if (!hasStem || PfncSuffix(format.layout)) return "";
    return fmt::format("{}{}{}", MonoOrBayerStem(format), format.bits, FrameSuffix(format.layout));
}

std::string TileName(const Format& format) {
    if (format.family != Family::Bayer && format.family != Family::TrueSense) return "";
    return fmt::format("CFA_{}_{}{}", TileRows(format), format.bits, FrameSuffix(format.layout));
}

std::string GStreamerName(const Format& format) {
    if (format.layout != Layout::Plain && format.layout != Layout::BigEndian) return "";
    const char* endianness = format.layout == Layout::BigEndian ? "be" : "le";
    switch (format.family) {
        case Family::Mono:
            if (format.bits == 8) return "GRAY8";
            if (format.bits == 16) return format.layout == Layout::BigEndian ? "GRAY16_BE" : "GRAY16_LE";
            return "";
        case Family::Bayer:
            return format.bits == 8 ? kTiles[format.phase]
                                    : fmt::format("{}{}{}", kTiles[format.phase], format.bits, endianness);
        case Family::TrueSense:
            return "";
        case Family::Colour:
            break;
    }
    const char* colours = kGStreamerColours[IndexOf(format.order)];
    if (format.bits == 8) return colours;
    return format.bits == 16 && SamplesPerPixel(format) == 4 ? fmt::format("{}64_LE", colours) : "";
}

std::string V4l2Name(const Format& format) {
    if (format.family == Family::Colour) return format.bits == 8 ? kV4l2Colours[IndexOf(format.order)] : "";
    if (format.family == Family::TrueSense) return "";
    for (const V4l2Row& row : kV4l2Rows)
        if (row.bits == format.bits && row.layout == format.layout)
            return format.family == Family::Mono ? row.mono : row.bayer[format.phase];
    return "";
}

std::string Name(const Format& format) {
    if (!IsValid(format)) return "no format";
    for (const auto& write : {LibraryName, PfncName, FrameName, TileName, GStreamerName})
        if (std::string name = write(format); !name.empty()) return name;
    return "no name";
}

std::vector<FormatName> NamesOf(const Format& format) {
    std::vector<FormatName> names;
    if (!IsValid(format)) return names;
    const auto add = [&names](Scheme scheme, std::string name) {
        if (!name.empty()) names.push_back({scheme, std::move(name)});
    };
    add(Scheme::Library, LibraryName(format));
    add(Scheme::Pfnc, PfncName(format));
    add(Scheme::Frame, FrameName(format));
    add(Scheme::Frame, TileName(format));
    add(Scheme::GStreamer, GStreamerName(format));
    add(Scheme::V4l2, V4l2Name(format));
    if (format.family == Family::Bayer && format.bits == 8) {
        for (const char* colours : {"BGR", "RGB"}) {
            add(Scheme::OpenCv, fmt::format("COLOR_Bayer{}2{}", kOpenCvSites[format.phase], colours));
            add(Scheme::OpenCv, fmt::format("COLOR_Bayer{}2{}", kOpenCvTiles[format.phase], colours));
        }
    }
    return names;
}

}  // namespace kvx::frame
