#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <sstream>

#include "KvxDemosaicing/KvxPixelFormat.h"
#include "KvxDemosaicing/KvxTrueSense.h"
#include "KvxFrame/Format.h"
#include "frame/support/Refusals.h"

namespace kvx::frame {
namespace {

std::vector<std::string> Words(const char* text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

TEST(FormatNames, MeanWhatTheirSchemesSay) {
    constexpr uint8_t kRg = 0, kGr = 1, kGb = 2, kBg = 3;
    const std::pair<const char*, Format> cases[] = {
        {"BayerRG12 rggb12le CFA_RG_GB_12 bayerrg12 RGGB12LE RG12", {Family::Bayer, 12, Layout::Plain, kRg}},
        {"BayerGB10p", {Family::Bayer, 10, Layout::Pfnc, kGb}},
        {"BayerGR12Packed", {Family::Bayer, 12, Layout::GigE, kGr}},
        {"BayerBG14p", {Family::Bayer, 14, Layout::Pfnc, kBg}},
        {"Mono16 GRAY16_LE", {Family::Mono, 16}},
        {"SCF1WGWB12p", {Family::TrueSense, 12, Layout::Pfnc, 2}},
        {"SCF1WGWR10", {Family::TrueSense, 10, Layout::Plain, 8}},
        {"TrueSense_RGGB_WRRW_3_14", {Family::TrueSense, 14, Layout::Plain, 15}},
        {"CFA_BWGW_WGWR_GWRW_WBWG_12p", {Family::TrueSense, 12, Layout::Pfnc, 4}},
        {"BayerGB12mipi pGCC", {Family::Bayer, 12, Layout::Mipi, kGb}},
        {"pgCC", {Family::Bayer, 12, Layout::Mipi, kGr}},
        {"pRAA", {Family::Bayer, 10, Layout::Mipi, kRg}},
        {"Mono10msb", {Family::Mono, 10, Layout::MsbAligned}},
        {"grbg14be", {Family::Bayer, 14, Layout::BigEndian, kGr}},
        {"BA81", {Family::Bayer, 8, Layout::Plain, kBg}},
        {"BA10", {Family::Bayer, 10, Layout::Plain, kGr}},
        {"BYR2", {Family::Bayer, 16, Layout::Plain, kBg}},
        {"RGBx", {Family::Colour, 8, Layout::Plain, 0, Order::Rgbx}},
        {"BGRA", {Family::Colour, 8, Layout::Plain, 0, Order::Bgra}},
        {"XR24", {Family::Colour, 8, Layout::Plain, 0, Order::Bgrx}},
        {"RGBA64_LE", {Family::Colour, 16, Layout::Plain, 0, Order::Rgba}},
        {"RGB16", {Family::Colour, 16, Layout::Plain, 0, Order::Rgb}},
        // OpenCV's letters are those of the second row.
        {"COLOR_BayerBG2BGR cv::COLOR_BayerRGGB2BGR_VNG", {Family::Bayer, 8, Layout::Plain, kRg}},
        {"gbrg cv2.COLOR_BayerGR2RGB_EA", {Family::Bayer, 8, Layout::Plain, kGb}},
    };
    for (const auto& [names, expected] : cases)
        for (const std::string& name : Words(names)) {
            const auto found = FindFormat(name);
            ASSERT_TRUE(found) << name;
            EXPECT_TRUE(*found == expected) << name << " is " << Name(*found);
        }
}

TEST(FormatNames, AreOneForEachFormatAndLeadBack) {
    std::map<std::string, Format> seen;
    for (const Format& format : AllFormats()) {
        const auto names = NamesOf(format);
        ASSERT_FALSE(names.empty());
        EXPECT_EQ(Name(format), names.front().name);
        for (const FormatName& name : names) {
            const auto [entry, isNew] = seen.emplace(name.name, format);
            EXPECT_TRUE(isNew || entry->second == format) << name.name << " names two formats";
            EXPECT_TRUE(FormatByName(name.name) == format) << name.name;
        }
    }
}

TEST(FormatNames, ThatAreWrongAreRefusedWithTheNearest) {
    for (const char* name : {"BayerRG13", "pgcc", "", "TrueSense", "YUV422_8", "BayerRG12q"}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(FindFormat(name));
        ExpectRefused(0x80070002, "did you mean", [&] { FormatByName(name); });
    }
    ExpectRefused(0x80070002, "BayerRG1", [] { FormatByName("BayerRG13"); });
}

TEST(FormatCodes, AgreeWithTheStandardAndTheLibrary) {
    // PFNC's numbers, from the first of each range on.
    const std::pair<uint32_t, const char*> ranges[] = {
        {0x0001, "Mono8"},
        {0x0003, "Mono10 Mono10Packed Mono12 Mono12Packed Mono16"},
        {0x0008, "BayerGR8 BayerRG8 BayerGB8 BayerBG8 BayerGR10 BayerRG10 BayerGB10 BayerBG10"},
        {0x0010, "BayerGR12 BayerRG12 BayerGB12 BayerBG12 RGB8 BGR8 RGBa8 BGRa8 RGB10 BGR10 RGB12 BGR12"},
        {0x0025, "Mono14 BayerGR10Packed BayerRG10Packed BayerGB10Packed BayerBG10Packed"},
        {0x002A, "BayerGR12Packed BayerRG12Packed BayerGB12Packed BayerBG12Packed"},
        {0x002E, "BayerGR16 BayerRG16 BayerGB16 BayerBG16"},
        {0x0033, "RGB16"},
        {0x0046, "Mono10p Mono12p"},
        {0x004A, "BGR14 BGR16"},
        {0x0051, "BGRa16 BayerBG10p BayerBG12p BayerGB10p BayerGB12p BayerGR10p BayerGR12p BayerRG10p BayerRG12p"},
        {0x005E, "RGB14"},
        {0x0064, "RGBa16"},
        {0x0067, "SCF1WBWG8 SCF1WBWG10 SCF1WBWG10p SCF1WBWG12 SCF1WBWG12p SCF1WBWG14 SCF1WBWG16"},
        {0x006E, "SCF1WGWB8 SCF1WGWB10 SCF1WGWB10p SCF1WGWB12 SCF1WGWB12p SCF1WGWB14 SCF1WGWB16"},
        {0x0075, "SCF1WGWR8 SCF1WGWR10 SCF1WGWR10p SCF1WGWR12 SCF1WGWR12p SCF1WGWR14 SCF1WGWR16"},
        {0x007C, "SCF1WRWG8 SCF1WRWG10 SCF1WRWG10p SCF1WRWG12 SCF1WRWG12p SCF1WRWG14 SCF1WRWG16"},
        {0x0104, "Mono14p BayerGR14p BayerRG14p BayerGB14p BayerBG14p BayerGR14 BayerRG14 BayerGB14 BayerBG14"}};
    int64_t numbered = 0;
    for (const auto& [first, names] : ranges)
        for (uint32_t number = first; const std::string& name : Words(names)) {
            const Format format = FormatByName(name);
            const auto bits = static_cast<uint32_t>(RowBytes(format, 8));  // of a pixel
            const uint32_t code = (format.family == Family::Colour ? 2u : 1u) << 24 | bits << 16 | number++;
            EXPECT_EQ(PfncCode(format), code) << name;
            EXPECT_TRUE(FormatByPfncCode(code) == format) << name;
            ++numbered;
        }
    EXPECT_EQ(std::ranges::count_if(AllFormats(), [](const Format& format) { return PfncCode(format).has_value(); }),
              numbered);
    EXPECT_EQ(Fourcc(FormatByName("BayerGR12mipi")), 0x43436770u);  // 'p' 'g' 'C' 'C'
    EXPECT_EQ(Fourcc(FormatByName("Mono10")), 0x20303159u);         // "Y10 "
    EXPECT_TRUE(FormatByFourcc(0x32314752u) == FormatByName("BayerRG12"));
    for (const uint32_t none : {0u, 0xFFFFFFFFu}) {
        EXPECT_FALSE(FormatByPfncCode(none));
        EXPECT_FALSE(FormatByFourcc(none));
        EXPECT_FALSE(FormatByLibraryCode(none));
    }

    int found = 0;
    for (const Format& format : AllFormats()) {
        const auto code = LibraryCode(format);
        if (!code) continue;
        ++found;
        EXPECT_STREQ(KvxPixelFormat_ByCode(*code)->name, Name(format).c_str());
        EXPECT_TRUE(FormatByLibraryCode(*code) == format);
        const std::string components = KvxPixelFormat_ByCode(*code)->components;
        if (format.family == Family::Bayer) {
            EXPECT_TRUE(components[0] == FilterAt(format, 0, 0) && components[2] == FilterAt(format, 0, 1));
        }
        if (format.family != Family::TrueSense) continue;
        EXPECT_EQ(PixelTypeToTruesenseGrid(*code), format.phase);
        // The components are the tile at the library's phase 0; a phase moves the origin by a column and a row.
        const uint32_t phase = KvxPixelFormat_ByCode(*code)->phase;
        for (uint32_t site = 0; site < 16; ++site)
            EXPECT_EQ(FilterAt(format, site / 4, site % 4),
                      components[2 * ((site / 4 + (phase >> 1)) % 4 * 4 + (site + phase % 2) % 4)])
                << Name(format) << " " << site;
    }
    EXPECT_EQ(found, 9 + 36 + 64 + 12);  // all but FLEX packings and YUV
}

TEST(Formats, ThatDoNotFitTogetherAreNone) {
    const Format none[] = {{Family::Mono, 9},
                           {Family::Mono, 8, Layout::Pfnc},
                           {Family::Mono, 8, Layout::Plain, 1},
                           {Family::Bayer, 14, Layout::GigE},
                           {Family::Bayer, 16, Layout::MsbAligned},
                           {Family::Bayer, 8, Layout::Plain, 4},
                           {Family::Bayer, 8, Layout::Plain, 0, Order::Bgr},
                           {Family::TrueSense, 12, Layout::Plain, 16},
                           {Family::Colour, 12, Layout::Plain, 0, Order::Rgba},
                           {Family::Colour, 12, Layout::Pfnc},
                           {static_cast<Family>(9), 8},
                           {Family::Bayer, 12, static_cast<Layout>(99)},
                           {Family::Colour, 8, Layout::Plain, 0, static_cast<Order>(6)}};
    for (const Format& format : none) {
        EXPECT_FALSE(IsValid(format));
        EXPECT_TRUE(NamesOf(format).empty());
        EXPECT_FALSE(LibraryCode(format));
    }
    EXPECT_FALSE(IsSource(FormatByName("SCF1WBWG16")));
    EXPECT_FALSE(IsSource(FormatByName("RGB8")));
    EXPECT_FALSE(IsDestination(FormatByName("Mono8")));
}

}  // namespace
}  // namespace kvx::frame
