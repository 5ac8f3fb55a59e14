// The flat TrueSense functions.
#include <memory>
#include <new>

#include "KvxDemosaicing/KvxTrueSenseFlat.h"
#include "KvxTrueSense/DemosaicerCall.h"
#include "KvxTrueSense/DemosaicerClasses.h"

namespace kvx {
namespace {

constexpr uint32_t Result(uint32_t code) {
    return KvxResult_Of(KvxComponentType_TrueSense, code);
}

/** What a typed function keeps from call to call: a demosaicer of each class, made when it is first wanted. */
template <class T>
class PersistentDemosaicers {
public:
    /** The one for `algorithm`. The one used before gives its memory back when it is another. Throws std::bad_alloc. */
    IDemConvertion<T>& Use(int algorithm, const DemosaicerClass<T>& selected) {
        std::unique_ptr<IDemConvertion<T>>& object = m_objects[algorithm];
        if (!object) object = selected.make();
        auto* next = dynamic_cast<IDemosaicing*>(object.get());
        if (m_last && !m_last->IsThis(next)) m_last->CleanMemory();
        m_last = next;
        return *object;
    }

private:
    std::unique_ptr<IDemConvertion<T>> m_objects[kTrueSenseAlgorithms];
    IDemosaicing* m_last = nullptr;
};

template <class Source, class Destination>
uint32_t Convert(PersistentDemosaicers<Source>& persistent, const DemosaicerCall<Source, Destination>& call,
                 int algType, bool temporary, const PixelLayout& layout) noexcept {
    if constexpr (sizeof(Source) == 1)
        if (call.params) call.params->normalizationEnable = 0;  // bytes are never deepened
    const DemosaicerClass<Source>* selected = DemosaicerClassOf<Source>(algType);
    if (!selected) return Result(KvxResult_InvalidArgument);
    try {
        if (!temporary) return Result(Run(persistent.Use(algType, *selected), call, layout));
        return Result(Run(*selected->make(), call, layout));
    } catch (const std::bad_alloc&) {
        return Result(KvxResult_NoMemory);
    }
}

}  // namespace
}  // namespace kvx

using kvx::Convert;
using kvx::PersistentDemosaicers;

uint32_t TrueSenseToRGB_8u_C1C3R(const uint8_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                 uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                 int algType, bool temporary) noexcept {
    static PersistentDemosaicers<uint8_t> s_dem;
    return Convert<uint8_t, uint8_t>(s_dem, {src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, params},
                                     algType, temporary, {false, false});
}

uint32_t TrueSenseToBGR_8u_C1C3R(const uint8_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                 uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                 int algType, bool temporary) noexcept {
    static PersistentDemosaicers<uint8_t> s_dem;
    return Convert<uint8_t, uint8_t>(s_dem, {src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, params},
                                     algType, temporary, {false, true});
}

uint32_t TrueSenseToRGB_8u_C1C4R(const uint8_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                 uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                 int algType, bool temporary) noexcept {
    static PersistentDemosaicers<uint8_t> s_dem;
    return Convert<uint8_t, uint8_t>(s_dem, {src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, params},
                                     algType, temporary, {true, false});
}

uint32_t TrueSenseToBGR_8u_C1C4R(const uint8_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                 uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                 int algType, bool temporary) noexcept {
    static PersistentDemosaicers<uint8_t> s_dem;
    return Convert<uint8_t, uint8_t>(s_dem, {src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, params},
                                     algType, temporary, {true, true});
}

uint32_t TrueSenseToRGB_16u8u_C1C3R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                    uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                    int algType, bool temporary) noexcept {
    static PersistentDemosaicers<uint16_t> s_dem;
    return Convert<uint16_t, uint8_t>(s_dem, {src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, params},
                                      algType, temporary, {false, false});
}

uint32_t TrueSenseToBGR_16u8u_C1C3R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                    uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                    int algType, bool temporary) noexcept {
    static PersistentDemosaicers<uint16_t> s_dem;
    return Convert<uint16_t, uint8_t>(s_dem, {src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, params},
                                      algType, temporary, {false, true});
}

uint32_t TrueSenseToRGB_16u8u_C1C4R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                    uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                    int algType, bool temporary) noexcept {
    static PersistentDemosaicers<uint16_t> s_dem;
    return Convert<uint16_t, uint8_t>(s_dem, {src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, params},
                                      algType, temporary, {true, false});
}

uint32_t TrueSenseToBGR_16u8u_C1C4R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                    uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                    int algType, bool temporary) noexcept {
    static PersistentDemosaicers<uint16_t> s_dem;
    return Convert<uint16_t, uint8_t>(s_dem, {src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, params},
                                      algType, temporary, {true, true});
}

uint32_t TrueSenseToRGB_16u_C1C3R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                  uint16_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                  int algType, bool temporary) noexcept {
    static PersistentDemosaicers<uint16_t> s_dem;
    return Convert<uint16_t, uint16_t>(s_dem, {src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, params},
                                       algType, temporary, {false, false});
}

uint32_t TrueSenseToBGR_16u_C1C3R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                  uint16_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                  int algType, bool temporary) noexcept {
    static PersistentDemosaicers<uint16_t> s_dem;
    return Convert<uint16_t, uint16_t>(s_dem, {src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, params},
                                       algType, temporary, {false, true});
}

uint32_t TrueSenseToRGB_16u_C1C4R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                  uint16_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                  int algType, bool temporary) noexcept {
    static PersistentDemosaicers<uint16_t> s_dem;
    return Convert<uint16_t, uint16_t>(s_dem, {src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, params},
                                       algType, temporary, {true, false});
}

uint32_t TrueSenseToBGR_16u_C1C4R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                  uint16_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                  int algType, bool temporary) noexcept {
    static PersistentDemosaicers<uint16_t> s_dem;
    return Convert<uint16_t, uint16_t>(s_dem, {src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, params},
                                       algType, temporary, {true, true});
}
