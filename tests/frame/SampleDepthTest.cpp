#include "KvxFrame/SampleDepth.h"

#include <gtest/gtest.h>

#include "frame/TestFrames.h"

namespace kvx::frame {
namespace {

TEST(CheckSampleDepth, TellsTheLikelyCause) {
    const struct {
        const char* truth;
        const char* claim;
        const char* sentence;  ///< or null where nothing is wrong
    } cases[] = {
        {"BayerRG12", "BayerRG12", nullptr},
        {"BayerRG10", "BayerRG12", nullptr},
        {"BayerRG12be", "BayerRG12", "big-endian"},
        {"BayerGB10msb", "BayerGB10", "right by 6 bits, or try BayerGB10msb"},
        {"BayerRG14", "BayerRG10", "try BayerRG14"},
        {"SCF1WBWG14", "SCF1WBWG12", "try TrueSense_BGGR_WBBW_0_14"},
        {"BayerRG16", "BayerRG12", "try BayerRG16"},
        {"BayerRG12p", "BayerRG12p", nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.truth) + " as " + c.claim);
        TestFrame frame = MakeNoise(FormatByName(c.truth), 32, 16);
        frame.view.format = FormatByName(c.claim);
        std::string sentence;
        try {
            CheckSampleDepth(frame.view);
        } catch (const Error& error) {
            EXPECT_EQ(error.Result(), 0x80070004u);
            sentence = error.what();
        }
        EXPECT_EQ(sentence.empty(), c.sentence == nullptr) << sentence;
        if (c.sentence) {
            EXPECT_NE(sentence.find(c.sentence), std::string::npos) << sentence;
        }
    }
}

}  // namespace
}  // namespace kvx::frame
