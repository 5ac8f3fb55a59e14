/** What a caller asks of a TrueSense conversion. */
#pragma once

#include <cstddef>

#include "KvxDemosaicing/KvxImage.h"
#include "KvxDemosaicing/KvxTrueSense.h"
#include "framework/RowExchange.h"

namespace kvx {

/** How a destination pixel is made up of samples. */
struct PixelLayout {
    bool withAlpha;  ///< a fourth sample, which is never written
    bool bgrOrder;
};

/** The arguments of IDemConvertion::Init() and InitRGB(), whatever the sample types. */
struct TrueSenseCall {
    const void* src;
    size_t srcSampleSize;
    _KvxRect roi;
    _KvxSize size;
    int srcLineStep;
    int pixelDepth;
    void* dst;
    size_t dstSampleSize;
    int dstLineStep;
    unsigned char grid;
    tagTrueSenseParam* params;  ///< null: the defaults
    /** In place of both buffers, if not null: the samples and the results are words, and the region is the frame. */
    const RowExchange* exchange = nullptr;
};

}  // namespace kvx
