// PFNC's, the library's and V4L2's numbers.
#include <array>

#include "KvxDemosaicing/KvxPixelFormat.h"
#include "frame/formats/FormatTables.h"

namespace kvx::frame {
namespace {

struct PfncRow {
    std::string_view name;
    uint32_t code;
};
// The bits 16 to 23 of a code are those of a pixel in memory.
constexpr PfncRow kPfncRows[] = {
    {"Mono8", 0x01080001},
    {"Mono10", 0x01100003},
    {"Mono10Packed", 0x010C0004},
    {"Mono12", 0x01100005},
    {"Mono12Packed", 0x010C0006},
    {"Mono16", 0x01100007},
    {"BayerGR8", 0x01080008},
    {"BayerRG8", 0x01080009},
    {"BayerGB8", 0x0108000A},
    {"BayerBG8", 0x0108000B},
    {"BayerGR10", 0x0110000C},
    {"BayerRG10", 0x0110000D},
    {"BayerGB10", 0x0110000E},
    {"BayerBG10", 0x0110000F},
    {"BayerGR12", 0x01100010},
    {"BayerRG12", 0x01100011},
    {"BayerGB12", 0x01100012},
    {"BayerBG12", 0x01100013},
    {"RGB8", 0x02180014},
    {"BGR8", 0x02180015},
    {"RGBa8", 0x02200016},
    {"BGRa8", 0x02200017},
    {"RGB10", 0x02300018},
    {"BGR10", 0x02300019},
    {"RGB12", 0x0230001A},
    {"BGR12", 0x0230001B},
    {"Mono14", 0x01100025},
    {"BayerGR10Packed", 0x010C0026},
    {"BayerRG10Packed", 0x010C0027},
    {"BayerGB10Packed", 0x010C0028},
    {"BayerBG10Packed", 0x010C0029},
    {"BayerGR12Packed", 0x010C002A},
    {"BayerRG12Packed", 0x010C002B},
    {"BayerGB12Packed", 0x010C002C},
    {"BayerBG12Packed", 0x010C002D},
    {"BayerGR16", 0x0110002E},
    {"BayerRG16", 0x0110002F},
    {"BayerGB16", 0x01100030},
    {"BayerBG16", 0x01100031},
    {"RGB16", 0x02300033},
    {"Mono10p", 0x010A0046},
    {"Mono12p", 0x010C0047},
    {"BGR14", 0x0230004A},
    {"BGR16", 0x0230004B},
    {"BGRa16", 0x02400051},
    {"BayerBG10p", 0x010A0052},
    {"BayerBG12p", 0x010C0053},
    {"BayerGB10p", 0x010A0054},
    {"BayerGB12p", 0x010C0055},
    {"BayerGR10p", 0x010A0056},
    {"BayerGR12p", 0x010C0057},
    {"BayerRG10p", 0x010A0058},
    {"BayerRG12p", 0x010C0059},
    {"RGB14", 0x0230005E},
    {"RGBa16", 0x02400064},
    {"SCF1WBWG8", 0x01080067},
    {"SCF1WBWG10", 0x01100068},
    {"SCF1WBWG10p", 0x010A0069},
    {"SCF1WBWG12", 0x0110006A},
    {"SCF1WBWG12p", 0x010C006B},
    {"SCF1WBWG14", 0x0110006C},
    {"SCF1WBWG16", 0x0110006D},
    {"SCF1WGWB8", 0x0108006E},
    {"SCF1WGWB10", 0x0110006F},
    {"SCF1WGWB10p", 0x010A0070},
    {"SCF1WGWB12", 0x01100071},
    {"SCF1WGWB12p", 0x010C0072},
    {"SCF1WGWB14", 0x01100073},
    {"SCF1WGWB16", 0x01100074},
    {"SCF1WGWR8", 0x01080075},
    {"SCF1WGWR10", 0x01100076},
    {"SCF1WGWR10p", 0x010A0077},
    {"SCF1WGWR12", 0x01100078},
    {"SCF1WGWR12p", 0x010C0079},
    {"SCF1WGWR14", 0x0110007A},
    {"SCF1WGWR16", 0x0110007B},
    {"SCF1WRWG8", 0x0108007C},
    {"SCF1WRWG10", 0x0110007D},
    {"SCF1WRWG10p", 0x010A007E},
    {"SCF1WRWG12", 0x0110007F},
    {"SCF1WRWG12p", 0x010C0080},
    {"SCF1WRWG14", 0x01100081},
    {"SCF1WRWG16", 0x01100082},
    {"Mono14p", 0x010E0104},
    {"BayerGR14p", 0x010E0105},
    {"BayerRG14p", 0x010E0106},
    {"BayerGB14p", 0x010E0107},
    {"BayerBG14p", 0x010E0108},
    {"BayerGR14", 0x01100109},
    {"BayerRG14", 0x0110010A},
    {"BayerGB14", 0x0110010B},
    {"BayerBG14", 0x0110010C},
};

/** The numbers of a format; 0 where a scheme has none. */
struct Codes {
    Format format;
    uint32_t pfnc, library, fourcc;
};

uint32_t PfncCodeOf(const std::string& name) {
    for (const PfncRow& row : kPfncRows)
        if (row.name == name) return row.code;
    return 0;
}

uint32_t LibraryCodeOf(const std::string& name) {
    const _KvxPixelFormat* row = KvxPixelFormat_ByName(name.c_str());
    return row ? row->pixelType : 0;
}

uint32_t FourccOf(std::string name) {
    if (name.empty()) return 0;
    name.resize(4, ' ');
    uint32_t code = 0;
    for (int i = 0; i < 4; ++i) code |= uint32_t{static_cast<uint8_t>(name[i])} << 8 * i;
    return code;
}

/** Made once: a conversion looks its formats up without any memory. */
const std::vector<Codes>& AllCodes() {
    static const std::vector<Codes> codes = [] {
        std::vector<Codes> rows;
        for (const Format& format : AllFormats())
            rows.push_back(
                {format, PfncCodeOf(PfncName(format)), LibraryCodeOf(LibraryName(format)), FourccOf(V4l2Name(format))});
        return rows;
    }();
    return codes;
}

std::optional<uint32_t> CodeOf(const Format& format, uint32_t Codes::*scheme) {
    for (const Codes& codes : AllCodes())
        if (codes.format == format && codes.*scheme != 0) return codes.*scheme;
    return std::nullopt;
}

std::optional<Format> FormatOf(uint32_t code, uint32_t Codes::*scheme) {
    for (const Codes& codes : AllCodes())
        if (code != 0 && codes.*scheme == code) return codes.format;
    return std::nullopt;
}

}  // namespace

std::optional<uint32_t> PfncCode(const Format& format) {
    return CodeOf(format, &Codes::pfnc);
}

std::optional<uint32_t> LibraryCode(const Format& format) {
    return CodeOf(format, &Codes::library);
}

std::optional<uint32_t> Fourcc(const Format& format) {
    return CodeOf(format, &Codes::fourcc);
}

std::optional<Format> FormatByPfncCode(uint32_t code) {
    return FormatOf(code, &Codes::pfnc);
}

std::optional<Format> FormatByLibraryCode(uint32_t pixelType) {
    return FormatOf(pixelType, &Codes::library);
}

std::optional<Format> FormatByFourcc(uint32_t fourcc) {
    return FormatOf(fourcc, &Codes::fourcc);
}

}  // namespace kvx::frame
