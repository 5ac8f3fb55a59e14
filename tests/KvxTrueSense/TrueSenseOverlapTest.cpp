// Source and destination may share memory: the picture is that of separate buffers.
#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "KvxDemosaicing/KvxPixelFormat.h"
#include "KvxDemosaicing/KvxTrueSenseFlat.h"

namespace kvx::test {
namespace {

constexpr uint32_t kWidth = 50, kHeight = 38;
constexpr int kSrcStep = 2 * kWidth + 6, kDstStep = 6 * kWidth + 10;

_KvxImage FrameAt(uint8_t* data) {
    return KvxImage_Make(KvxFormat_TrueSense_GBRG_WGGW_1_12, kWidth, kHeight, kSrcStep, data);
}
_KvxImage PictureAt(uint8_t* data) {
    return KvxImage_Make(KvxFormat_RGB16, kWidth, kHeight, kDstStep, data);
}

uint32_t ByComponent(uint8_t* from, uint8_t* to, int algorithm) {
    KvxTrueSense* component = KvxTrueSense_CreateComponent();
    KvxComponent_SetParamInt(KvxTrueSense_GetComponent(component), "TrueSenseAlgType", algorithm);
    _KvxImage src = FrameAt(from), dst = PictureAt(to);
    const uint32_t result = KvxTrueSense_ConvertImage(component, &src, &dst);
    KvxTrueSense_DeleteComponent(component);
    return result;
}

/** A region in all its directions: source upwards, mirrored both ways, pixels backwards. */
uint32_t ByRegion(uint8_t* src, uint8_t* dst, int algorithm) {
    tagTrueSenseParam params;
    TrueSense_DefaultValues(&params);
    params.horMirrored = params.verMirrored = 1;
    auto* top = reinterpret_cast<const uint16_t*>(src + (kHeight - 1) * kSrcStep);
    return TrueSenseToRGB_16u8u_C1C4R(top, {7, 5, 30, 20}, {kWidth, kHeight}, -kSrcStep, 12, dst + 29 * 4, -kDstStep, 9,
                                      &params, algorithm, true);
}

TEST(TrueSenseOverlap, DoesNotChangeThePicture) {
    std::mt19937 random(1);
    std::vector<uint8_t> drawn(40000);
    for (size_t i = 0; i < drawn.size(); i += 2) {
        drawn[i] = static_cast<uint8_t>(random());
        drawn[i + 1] = static_cast<uint8_t>(random() % 16);
    }
    constexpr int from = 14000;
    for (const auto convert : {ByComponent, ByRegion})
        for (int algorithm = 0; algorithm < 5; ++algorithm)
            for (const int offset : {-7000, -600, 0, 2, 2500}) {
                std::vector<uint8_t> source = drawn, separate = drawn, shared = drawn;
                ASSERT_EQ(convert(source.data() + from, separate.data() + from + offset, algorithm), 0u);
                ASSERT_EQ(source, drawn);
                ASSERT_NE(separate, drawn);
                ASSERT_EQ(convert(shared.data() + from, shared.data() + from + offset, algorithm), 0u);
                ASSERT_EQ(shared, separate) << "algorithm " << algorithm << ", offset " << offset;
            }
}

}  // namespace
}  // namespace kvx::test
