/** What the flat functions share with each other and with the component's routing. */
#pragma once

#include <cstdint>

#include "KvxBayer/BayerConversion.h"
#include "KvxDemosaicing/KvxBayerFlat.h"

namespace kvx {

/** The arguments of a typed flat function, in its order. */
struct BayerFlatArguments {
    const void* pSrc;
    _KvxRect srcRoi;
    _KvxSize srcSize;
    int srcStep;
    int pixelDepth;
    void* pDst;
    int dstStep;
    uint8_t bayerPattern;
    int algType;
};

/** The 16u8u functions: see KvxBayerFlat.h. */
uint32_t BayerToShiftedBytes(const BayerFlatArguments& arguments, ChannelOrder order, SlotBytes slot) noexcept;

/**
 * The flat path behind its format checks: unlike the component's, it takes an unknown algorithm for a request to do
 * nothing.
 * @return a result code with the Bayer component's type
 */
uint32_t ConvertBayerFlat(const _KvxImage& src, _KvxImage& dst, int algType, ChannelOrder order,
                          const BayerOutput& output, SlotBytes slot = SlotBytes::AsWritten) noexcept;

}  // namespace kvx
