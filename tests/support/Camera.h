/** A component that converts frame after frame. */
#pragma once

#include "KvxDemosaicing/KvxPipeline.h"
#include "KvxDemosaicing/KvxTrueSense.h"
#include "support/BayerFrames.h"

namespace kvx::test {

struct Stream {
    const char* what;
    uint32_t srcType, dstType;
    int depth, algorithm;
    size_t dstSampleSize, padding;
    uint32_t checksum;  ///< Hash() of Camera(stream, 1, 301, 530) on every machine
};
inline constexpr Stream kStreams[] = {
    {"8 bits", KvxFormat_BayerRG8, KvxFormat_RGB8, 8, 0, 1, 0, 0x2182F818},
    {"12 bits", KvxFormat_BayerGR12, KvxFormat_BGR12, 12, 0, 2, 0, 0x97715E6E},
    {"12 bits edge-aware", KvxFormat_BayerGR12, KvxFormat_BGR12, 12, 2, 2, 0, 0x46F213AE},
    {"12 bits edge-aware, padded rows", KvxFormat_BayerGR12, KvxFormat_BGR12, 12, 2, 2, 10, 0x46F213AE},
    {"8 bits in-house", KvxFormat_BayerGB8, KvxFormat_BGR8, 8, 1, 1, 0, 0x5A521DA7},
    {"12 bits in-house, padded rows", KvxFormat_BayerGR12, KvxFormat_RGB12, 12, 1, 2, 6, 0x12C5ADCB},
    {"12 bits to bytes", KvxFormat_BayerGR12, KvxFormat_RGB8, 12, 0, 1, 3, 0x69BE2C6E},
    {"TrueSense 8 bits", KvxFormat_TrueSense_BGGR_WBBW_1_8, KvxFormat_RGB8, 8, 0, 1, 0, 0x1F6F8890},
    {"TrueSense 12 bits", KvxFormat_TrueSense_GBRG_WGGW_2_12, KvxFormat_BGR12, 12, 0, 2, 6, 0xFBE2477D},
    {"TrueSense 8 bits Bayer-like", KvxFormat_TrueSense_RGGB_WRRW_0_8, KvxFormat_BGR8, 8, 2, 1, 3, 0x90F73E82},
    {"TrueSense 14 bits Bayer-like", KvxFormat_TrueSense_BGGR_WBBW_3_14, KvxFormat_RGB8, 14, 2, 1, 0, 0x2B40FC71},
    {"TrueSense 8 bits, noise reduced", KvxFormat_TrueSense_GRBG_WGGW_2_8, KvxFormat_RGB8, 8, 4, 1, 0, 0x5EAAFEA8},
    {"TrueSense 12 bits, noise reduced", KvxFormat_TrueSense_BGGR_WBBW_0_12, KvxFormat_RGB12, 12, 4, 2, 0, 0x2828CD67},
    {"TrueSense 12 bits, noise reduced fast", KvxFormat_TrueSense_BGGR_WBBW_1_12, KvxFormat_RGB8, 12, 3, 1, 5,
     0x6E2FCD8E},
    {"TrueSense 10 bits, noise reduced fast", KvxFormat_TrueSense_RGGB_WRRW_3_10, KvxFormat_BGR10, 10, 3, 2, 0,
     0x5AC2554B},
    {"TrueSense 8 bits, light", KvxFormat_TrueSense_GBRG_WGGW_1_8, KvxFormat_RGB8, 8, 1, 1, 0, 0x6B4A3096},
    {"TrueSense 14 bits, light", KvxFormat_TrueSense_GRBG_WGGW_0_14, KvxFormat_RGB14, 14, 1, 2, 2, 0x21214BD0},
};

/** A component of the stream's family and a frame for it. */
class Camera {
public:
    explicit Camera(const Stream& stream, unsigned seed = 1, uint32_t width = 640, uint32_t height = 480)
        : m_src(MakeSource(stream.srcType, stream.depth, width, height, stream.padding,
                           MakeSamples(Fill::Noise, width, height, stream.depth, seed))),
          m_dst(stream.dstType, width, height, width * 3 * stream.dstSampleSize,
                width * 3 * stream.dstSampleSize + stream.padding) {
        if (PixelTypeToTruesenseGrid(stream.srcType) == -1)
            m_bayer = KvxBayer_CreateComponent();
        else
            m_trueSense = KvxTrueSense_CreateComponent();
        KvxComponent_SetParamInt(KvxBayer_GetComponent(m_bayer), "BayerAlgType", stream.algorithm);
        KvxComponent_SetParamInt(KvxTrueSense_GetComponent(m_trueSense), "TrueSenseAlgType", stream.algorithm);
    }
    Camera(const Camera&) = delete;
    ~Camera() {
        KvxBayer_DeleteComponent(m_bayer);
        KvxTrueSense_DeleteComponent(m_trueSense);
    }
    uint32_t Frame() {
        return m_bayer ? KvxBayer_ConvertImage(m_bayer, &m_src.Record(), &m_dst.Record())
                       : KvxTrueSense_ConvertImage(m_trueSense, &m_src.Record(), &m_dst.Record());
    }
    uint32_t Hash() {
        const auto picture = m_dst.Pixels();
        return calcHash(picture.data(), static_cast<int32_t>(picture.size()), 1, 0);
    }

private:
    KvxBayer* m_bayer = nullptr;
    KvxTrueSense* m_trueSense = nullptr;
    GuardedImage m_src, m_dst;
};

}  // namespace kvx::test
