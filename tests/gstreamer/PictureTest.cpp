#include "gstreamer/FrameElement.h"

namespace kvx::test {
namespace {

TEST(GStreamerPicture, IsTheFrameLayersForEveryFormat) {
    std::vector<std::string> names = {"SCF1WBWG8", "SCF1WGWR12p", "TrueSense_BGGR_WBBW_1_14",
                                      "CFA_WRWG_RWGW_WGWB_GWBW_10mipi"};
    for (const char* tile : {"rggb", "grbg", "gbrg", "bggr"})
        for (const char* depth : {"", "10le", "10be", "12le", "12be", "14le", "14be", "16le", "16be"})
            names.push_back(std::string(tile) + depth);
    for (const std::string& name : names)
        for (const char* picture : {"RGB", "BGR", "RGBx", "BGRx", "RGBA", "BGRA", "RGBA64_LE", "BGRA64_LE", "ARGB64_LE",
                                    "ABGR64_LE", "ARGB64", "RGBA64_BE", "BGRA64_BE", "ARGB64_BE", "ABGR64_BE"}) {
            SCOPED_TRACE(name + " to " + picture);
            const frame::TestFrame frame = frame::MakeNoise(frame::FormatByName(name), 21, 10);
            FrameElement element;
            element.SetCaps(name, frame.view, picture);
            element.ExpectPicture(MakeBuffer(frame.bytes), frame.view);
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
                 {"SCF1WBWG12",
                  "pfnc",
                  "SCF1WBWG12p",
                  "algorithm=kodak-like tone=linear parameters=\"p,sharpnessEnable=false,panSigma0=(double)2.5\"",
                  {"kodak-like", {{"sharpnessEnable", "0"}, {"panSigma0", "2.5"}}, 0, frame::Finish{}}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.format);
        const frame::TestFrame frame = frame::MakeNoise(frame::FormatByName(c.format), 44, 24);
        FrameElement element(fmt::format("packing={} {}", c.packing, c.properties));
        element.SetCaps(c.caps, frame.view, "BGRA");
        element.ExpectPicture(MakeBuffer(frame.bytes), frame.view, c.options);
    }
}

}  // namespace
}  // namespace kvx::test
