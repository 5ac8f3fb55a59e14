#include "gstreamer/FrameElement.h"

#include <gtest/gtest.h>

#include <thread>

#include "KvxDemosaicing/KvxBayer.h"
#include "KvxDemosaicing/KvxBayerFlat.h"
#include "KvxDemosaicing/KvxPixelFormat.h"
#include "KvxDemosaicing/KvxTrueSense.h"

namespace kvx::test {
namespace {

constexpr const char* kPictures[] = {"RGB",    "BGR",       "RGBx",      "BGRx",      "RGBA",
                                     "BGRA",   "RGBA64_LE", "BGRA64_LE", "ARGB64_LE", "ABGR64_LE",
                                     "ARGB64", "RGBA64_BE", "BGRA64_BE", "ARGB64_BE", "ABGR64_BE"};

/** The frame through the element as through the frame layer. */
void ExpectSamePicture(FrameElement& element, const frame::TestFrame& frame, const char* picture,
                       const frame::Options& options = {}) {
    const Buffer result = element.Convert(MakeBuffer(frame.bytes));
    ASSERT_TRUE(result) << element.Error();
    EXPECT_EQ(Samples(result.get(), picture, frame.view.width, frame.view.height),
              ExpectedSamples(frame.view, picture, options));
}

TEST(GStreamerPicture, IsTheFrameLayersForEveryFormat) {
    std::vector<std::string> names = {"SCF1WBWG8", "SCF1WGWR12p", "TrueSense_BGGR_WBBW_1_14",
                                      "CFA_WRWG_RWGW_WGWB_GWBW_10mipi"};
    for (const char* tile : {"rggb", "grbg", "gbrg", "bggr"})
        for (const char* depth : {"", "10le", "10be", "12le", "12be", "14le", "14be", "16le", "16be"})
            names.push_back(std::string(tile) + depth);
    for (const std::string& name : names) {
        const frame::TestFrame frame = frame::MakeNoise(frame::FormatByName(name), 21, 10);
        for (const char* picture : kPictures) {
            SCOPED_TRACE(name + " to " + picture);
            FrameElement element;
            element.SetCaps(frame.view, picture, name.c_str());
            ExpectSamePicture(element, frame, picture);
        }
    }
}

TEST(GStreamerPicture, IsTheFrameLayersForEveryPackingAndAlgorithm) {
    const struct {
        const char *caps, *packing, *format, *properties;
        frame::Options options;
    } cases[] = {{"rggb12le", "pfnc", "BayerRG12p", "algorithm=ipp", {"ipp", {}, 0, {}}},
                 {"grbg10le", "gige", "BayerGR10Packed", "algorithm=edge-aware", {"edge-aware", {}, 0, {}}},
                 {"gbrg14be", "mipi", "CFA_GB_RG_14mipi", "algorithm=1 n-threads=3", {"ipp", {}, 3, {}}},
                 {"bggr12be", "msb", "BayerBG12msb", "", {}},
                 {"SCF1WBWG12", "pfnc", "SCF1WBWG12p", "algorithm=kodak-like", {"kodak-like", {}, 0, {}}},
                 {"SCF1WBWG8",
                  "none",
                  "SCF1WBWG8",
                  "algorithm=simple parameters=\"p,RR=0.5,sharpnessEnable=false\"",
                  {"simple", {{"RR", "0.5"}, {"sharpnessEnable", "0"}}, 0, {}}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.format);
        const frame::TestFrame frame = frame::MakeNoise(frame::FormatByName(c.format), 44, 24);
        FrameElement element(fmt::format("packing={} {}", c.packing, c.properties));
        element.SetCaps(frame.view, "BGRA", c.caps);
        ExpectSamePicture(element, frame, "BGRA", c.options);
    }
}

/** The library itself, called from C as an application would. */
TEST(GStreamerPicture, IsTheLibrarys) {
    for (const char* name : {"BayerGB8", "TrueSense_GBRG_WGGW_1_8"}) {
        SCOPED_TRACE(name);
        const frame::TestFrame frame = frame::MakeNoise(frame::FormatByName(name), 41, 22);
        std::vector<uint8_t> expected(41 * 22 * 3);
        _KvxImage src{};
        src.pixelType = *frame::LibraryCode(frame.view.format);
        src.pixelDepth = 8;
        src.width = 41;
        src.height = 22;
        src.lineStep = 41;
        src.data = const_cast<void*>(frame.view.data);
        _KvxImage dst = src;
        dst.pixelType = KvxFormat_RGB8;
        dst.lineStep = 123;
        dst.data = expected.data();
        const bool isBayer = frame.view.format.family == frame::Family::Bayer;
        if (isBayer) {
            ASSERT_EQ(BayerToColor(&src, &dst, KvxBayerAlgorithm_EdgeAware), 0u);
        } else {
            KvxTrueSense* component = KvxTrueSense_CreateComponent();
            ASSERT_EQ(KvxTrueSense_ConvertImage(component, &src, &dst), 0u);
            KvxTrueSense_DeleteComponent(component);
        }
        for (const char* format : {"RGB", "BGR", "RGBx", "BGRA"}) {
            FrameElement element(isBayer ? "algorithm=edge-aware" : "");
            element.SetCaps(frame.view, format, name);
            const Buffer picture = element.Convert(MakeBuffer(frame.bytes));
            ASSERT_TRUE(picture) << element.Error();
            std::vector<uint16_t> samples = Samples(picture.get(), format, 41, 22);
            if (samples.size() > expected.size())
                for (size_t pixel = 0; pixel < 41 * 22; ++pixel) {
                    EXPECT_EQ(samples[3 * pixel + 3], 255);
                    samples.erase(samples.begin() + static_cast<ptrdiff_t>(3 * pixel + 3));
                }
            EXPECT_EQ(samples, std::vector<uint16_t>(expected.begin(), expected.end())) << format;
        }
    }
}

TEST(GStreamerPicture, IsTheSameInManyElementsAtOnce) {
    const frame::TestFrame bayer = frame::MakeNoise(frame::FormatByName("rggb12le"), 200, 90);
    const frame::TestFrame trueSense = frame::MakeNoise(frame::FormatByName("SCF1WBWG12"), 200, 90);
    std::vector<std::jthread> threads;
    for (int number = 0; number < 8; ++number)
        threads.emplace_back([&, number] {
            const frame::TestFrame& frame = number % 2 ? bayer : trueSense;
            FrameElement element(number % 2 ? "algorithm=ipp" : "algorithm=kodak-like");
            element.SetCaps(frame.view, "RGBx");
            for (int round = 0; round < 5; ++round)
                ExpectSamePicture(element, frame, "RGBx", {number % 2 ? "ipp" : "kodak-like", {}, 0, {}});
        });
}

}  // namespace
}  // namespace kvx::test
