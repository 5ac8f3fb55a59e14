/** One conversion by a demosaicer, whichever class it is of. */
#pragma once

#include "KvxTrueSense/IDemConvertion.h"

namespace kvx {

/** What Init() and InitRGB() take, in their order. */
template <class Source, class Destination>
struct DemosaicerCall {
    const Source* src;
    _KvxRect roi;
    _KvxSize size;
    int srcLineStep;
    int pixelDepth;
    Destination* dst;
    int dstLineStep;
    unsigned char grid;
    tagTrueSenseParam* params;
};

/** How pixels of the destination are made up of samples. */
struct PixelLayout {
    bool withAlpha;
    bool bgrOrder;
};

/** Both steps of a conversion. @return the small code of the one that failed, or 0 */
template <class Source, class Destination>
uint32_t Run(IDemConvertion<Source>& demosaicer, const DemosaicerCall<Source, Destination>& call,
             const PixelLayout& layout) {
    const auto& [src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, params] = call;
    demosaicer.SetOutputPixelType(layout.withAlpha, layout.bgrOrder);
    int result = 0;
    if constexpr (sizeof(Source) == sizeof(Destination)) {
        result = demosaicer.Init(src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, params);
        if (result == 0) result = demosaicer.Calculate();
    } else {
        result = demosaicer.InitRGB(src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, params);
        if (result == 0) result = demosaicer.CalculateRGB();
    }
    return static_cast<uint32_t>(result);
}

}  // namespace kvx
