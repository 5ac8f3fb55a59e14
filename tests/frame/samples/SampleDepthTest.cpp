#include "KvxFrame/SampleDepth.h"

#include <gtest/gtest.h>

#include "frame/support/Refusals.h"
#include "frame/support/TestFrames.h"

namespace kvx::frame {
namespace {

TEST(CheckSampleDepth, NamesTheLikelyCause) {
    const struct {
        const char *truth, *claim;
        uint16_t sample;       ///< all samples of the frame; 0: noise
        const char* sentence;  ///< empty if nothing is wrong
    } cases[] = {
        {"BayerRG12", "BayerRG12", 0, ""},
        {"BayerRG10", "BayerRG12", 0, ""},
        {"BayerRG12be", "BayerRG12", 0, "big-endian"},
        {"BayerGB10msb", "BayerGB10", 0, "right by 6 bits, or try BayerGB10msb"},
        {"SCF1WBWG14", "SCF1WBWG12", 0, "try TrueSense_BGGR_WBBW_0_14"},
        {"BayerRG16", "BayerRG12", 0, "try BayerRG16"},
        {"BayerRG16", "BayerRG12", 4095, ""},
        {"BayerRG16", "BayerRG10", 4095, "try BayerRG12"},
        {"BayerRG16", "BayerRG14", 16384, "16384"},  // white + 1
        {"BayerRG12p", "BayerRG12p", 0, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.truth) + " as " + c.claim);
        const Format truth = FormatByName(c.truth);
        TestFrame frame = c.sample == 0 ? MakeNoise(truth, 32, 16)
                                        : MakeFrame(truth, 32, 16, [&](uint32_t, uint32_t) { return c.sample; });
        frame.view.format = FormatByName(c.claim);
        ExpectRefused(*c.sentence ? 0x80070004 : 0, c.sentence, [&] { CheckSampleDepth(frame.view); });
    }
    TestFrame last = MakeFrame(FormatByName("BayerRG12"), 33, 5, [](uint32_t row, uint32_t column) {
        return uint16_t(row * column == 4 * 32 ? 4096 : 0);
    });
    for (const ptrdiff_t stride : {0, 66, -66}) {
        last.view.stride = stride;
        if (stride < 0) last.view.data = last.bytes.data() + 4 * 66;
        ExpectRefused(0x80070004, "4096", [&] { CheckSampleDepth(last.view); });
    }
}

}  // namespace
}  // namespace kvx::frame
