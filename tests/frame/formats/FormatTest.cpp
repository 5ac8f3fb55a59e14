#include <fmt/core.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "KvxDemosaicing/KvxPixelFormat.h"
#include "KvxDemosaicing/KvxTrueSense.h"
#include "KvxFrame/Format.h"
#include "frame/support/Refusals.h"
#include "support/Checksum.h"

namespace kvx::frame {
namespace {

TEST(FormatNames, MeanWhatTheirSchemesSay) {
    constexpr uint8_t kRg = 0, kGr = 1, kGb = 2, kBg = 3;
    const std::pair<const char*, Format> cases[] = {
        {"BayerRG12", {Family::Bayer, 12, Layout::Plain, kRg}},
        {"BayerGB10p", {Family::Bayer, 10, Layout::Pfnc, kGb}},
        {"BayerGR12Packed", {Family::Bayer, 12, Layout::GigE, kGr}},
        {"BayerBG14p", {Family::Bayer, 14, Layout::Pfnc, kBg}},
        {"Mono16", {Family::Mono, 16}},
        {"SCF1WGWB12p", {Family::TrueSense, 12, Layout::Pfnc, 2}},
        {"SCF1WGWR10", {Family::TrueSense, 10, Layout::Plain, 8}},
        {"TrueSense_RGGB_WRRW_3_14", {Family::TrueSense, 14, Layout::Plain, 15}},
        {"CFA_RG_GB_12", {Family::Bayer, 12, Layout::Plain, kRg}},
        {"CFA_BWGW_WGWR_GWRW_WBWG_12p", {Family::TrueSense, 12, Layout::Pfnc, 4}},
        {"BayerGB12mipi", {Family::Bayer, 12, Layout::Mipi, kGb}},
        {"Mono10msb", {Family::Mono, 10, Layout::MsbAligned}},
        {"gbrg", {Family::Bayer, 8, Layout::Plain, kGb}},
        {"rggb12le", {Family::Bayer, 12, Layout::Plain, kRg}},
        {"grbg14be", {Family::Bayer, 14, Layout::BigEndian, kGr}},
        {"GRAY16_LE", {Family::Mono, 16}},
        {"RGBx", {Family::Colour, 8, Layout::Plain, 0, Order::Rgbx}},
        {"BGRA", {Family::Colour, 8, Layout::Plain, 0, Order::Bgra}},
        {"RGBA64_LE", {Family::Colour, 16, Layout::Plain, 0, Order::Rgba}},
        {"RGB16", {Family::Colour, 16, Layout::Plain, 0, Order::Rgb}},
        {"BA81", {Family::Bayer, 8, Layout::Plain, kBg}},
        {"BA10", {Family::Bayer, 10, Layout::Plain, kGr}},
        {"pGCC", {Family::Bayer, 12, Layout::Mipi, kGb}},
        {"pgCC", {Family::Bayer, 12, Layout::Mipi, kGr}},
        {"pRAA", {Family::Bayer, 10, Layout::Mipi, kRg}},
        {"BYR2", {Family::Bayer, 16, Layout::Plain, kBg}},
        {"XR24", {Family::Colour, 8, Layout::Plain, 0, Order::Bgrx}},
        // The trap: OpenCV's letters are those of the second row.
        {"COLOR_BayerBG2BGR", {Family::Bayer, 8, Layout::Plain, kRg}},
        {"cv2.COLOR_BayerGR2RGB_EA", {Family::Bayer, 8, Layout::Plain, kGb}},
        {"cv::COLOR_BayerRGGB2BGR_VNG", {Family::Bayer, 8, Layout::Plain, kRg}},
        // Case is forgiven where it decides nothing.
        {"bayerrg12", {Family::Bayer, 12, Layout::Plain, kRg}},
        {"RGGB12LE", {Family::Bayer, 12, Layout::Plain, kRg}},
    };
    for (const auto& [name, expected] : cases) {
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
    std::set<std::string> rows;
    for (const Format& format : AllFormats())
        if (const auto code = PfncCode(format)) {
            rows.insert(fmt::format("{} {:x}\n", Name(format), *code));
            EXPECT_TRUE(FormatByPfncCode(*code) == format) << Name(format);
        }
    std::string table;
    for (const std::string& row : rows) table += row;
    EXPECT_EQ(test::ChecksumOf(table), 0x3E32BE9Au) << table;       // of the standard's names and numbers
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
        // The bits that a pixel takes are part of PFNC's code.
        if (const auto pfnc = PfncCode(format)) {
            EXPECT_EQ(pfnc.value() >> 16 & 0xFF, RowBytes(format, 8)) << Name(format);
        }
        const auto code = LibraryCode(format);
        if (!code) continue;
        ++found;
        EXPECT_STREQ(KvxPixelFormat_ByCode(*code)->name, Name(format).c_str());
        EXPECT_TRUE(FormatByLibraryCode(*code) == format);
        if (format.family == Family::TrueSense) {
            EXPECT_EQ(PixelTypeToTruesenseGrid(*code), format.phase);
        }
        const std::string components = KvxPixelFormat_ByCode(*code)->components;
        if (format.family == Family::Bayer) {
            EXPECT_TRUE(components[0] == FilterAt(format, 0, 0) && components[2] == FilterAt(format, 0, 1));
        }
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
