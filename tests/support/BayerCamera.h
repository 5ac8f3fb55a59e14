/** A source of frames for tests of what happens from frame to frame. */
#pragma once

#include "support/BayerFrames.h"

namespace kvx::test {

struct Stream {
    const char* what;
    uint32_t srcType, dstType;
    int depth, algorithm;
    size_t dstSampleSize, padding;
};
inline constexpr Stream kStreams[] = {
    {"8 bits", KvxFormat_BayerRG8, KvxFormat_RGB8, 8, 0, 1, 0},
    {"12 bits", KvxFormat_BayerGR12, KvxFormat_BGR12, 12, 0, 2, 0},
    {"12 bits edge-aware", KvxFormat_BayerGR12, KvxFormat_BGR12, 12, 2, 2, 0},
    {"12 bits edge-aware, padded rows", KvxFormat_BayerGR12, KvxFormat_BGR12, 12, 2, 2, 10},
    {"8 bits in-house", KvxFormat_BayerGB8, KvxFormat_BGR8, 8, 1, 1, 0},
    {"12 bits in-house, padded rows", KvxFormat_BayerGR12, KvxFormat_RGB12, 12, 1, 2, 6},
    {"12 bits to bytes", KvxFormat_BayerGR12, KvxFormat_RGB8, 12, 0, 1, 3},
};

class Camera {
public:
    explicit Camera(const Stream& stream, unsigned seed = 1)
        : m_samples(MakeSamples(Fill::Noise, 640, 480, stream.depth, seed)),
          m_src(MakeSource(stream.srcType, stream.depth, 640, 480, stream.padding, m_samples)),
          m_dst(stream.dstType, 640, 480, 1920 * stream.dstSampleSize, 1920 * stream.dstSampleSize + stream.padding) {
        KvxComponent_SetParamInt(KvxBayer_GetComponent(m_component), "BayerAlgType", stream.algorithm);
    }
    ~Camera() {
        KvxBayer_DeleteComponent(m_component);
    }
    uint32_t Frame() {
        return KvxBayer_ConvertImage(m_component, &m_src.Record(), &m_dst.Record());
    }
    std::vector<uint8_t> Picture() {
        return m_dst.Pixels();
    }

private:
    KvxBayer* m_component = KvxBayer_CreateComponent();
    std::vector<uint8_t> m_samples;
    GuardedImage m_src, m_dst;
};

}  // namespace kvx::test
