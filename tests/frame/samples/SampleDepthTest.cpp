#include "KvxFrame/SampleDepth.h"

#include <gtest/gtest.h>

#include "frame/support/Refusals.h"
#include "frame/support/TestFrames.h"

namespace kvx::frame {
namespace {

TEST(CheckSampleDepth, TellsTheLikelyCause) {
    const struct {
        const char* truth;
        const char* claim;
        const char* sentence;  ///< empty where nothing is wrong
    } cases[] = {
        {"BayerRG12", "BayerRG12", ""},
        {"BayerRG10", "BayerRG12", ""},
        {"BayerRG12be", "BayerRG12", "big-endian"},
        {"BayerGB10msb", "BayerGB10", "right by 6 bits, or try BayerGB10msb"},
        {"BayerRG14", "BayerRG10", "try BayerRG14"},
        {"SCF1WBWG14", "SCF1WBWG12", "try TrueSense_BGGR_WBBW_0_14"},
        {"BayerRG16", "BayerRG12", "try BayerRG16"},
        {"BayerRG12p", "BayerRG12p", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.truth) + " as " + c.claim);
        TestFrame frame = MakeNoise(FormatByName(c.truth), 32, 16);
        frame.view.format = FormatByName(c.claim);
        ExpectRefused(*c.sentence ? 0x80070004 : 0, c.sentence, [&] { CheckSampleDepth(frame.view); });
    }
}

}  // namespace
}  // namespace kvx::frame
