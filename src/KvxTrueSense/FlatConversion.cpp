#include "KvxTrueSense/FlatConversion.h"

#include <memory>
#include <new>

#include "KvxTrueSense/DemosaicerClasses.h"

namespace kvx {
namespace {

/** What a typed function keeps from call to call: a demosaicer of each class, made when it is first needed. */
template <class T>
class PersistentDemosaicers {
public:
    /** The one of `selected`. The one used before, if another, releases its memory. Throws std::bad_alloc. */
    TrueSenseDemosaicer<T>& Use(int algorithm, const DemosaicerClass<T>& selected) {
        std::unique_ptr<TrueSenseDemosaicer<T>>& object = m_objects[algorithm];
        if (!object) object = selected.make();
        if (m_last && !m_last->IsThis(object.get())) m_last->CleanMemory();
        m_last = object.get();
        return *object;
    }

private:
    std::unique_ptr<TrueSenseDemosaicer<T>> m_objects[kTrueSenseAlgorithms];
    TrueSenseDemosaicer<T>* m_last = nullptr;
};

/** Each typed function has its own: by the size of the destination's samples and the layout. */
template <class T>
PersistentDemosaicers<T>& PersistentOf(size_t dstSampleSize, const PixelLayout& layout) {
    static PersistentDemosaicers<T> s_dem[2][2][2];
    return s_dem[dstSampleSize - 1][layout.withAlpha][layout.bgrOrder];
}

template <class T>
uint32_t Convert(const TrueSenseCall& call, const PixelLayout& layout, int algType, bool temporary) {
    const DemosaicerClass<T>* selected = DemosaicerClassOf<T>(algType);
    if (!selected) return KvxResult_InvalidArgument;
    if (temporary) return static_cast<uint32_t>(selected->make()->Run(call, layout));
    auto& persistent = PersistentOf<T>(call.dstSampleSize, layout);
    return static_cast<uint32_t>(persistent.Use(algType, *selected).Run(call, layout));
}

}  // namespace

uint32_t ConvertFlat(const TrueSenseCall& call, const PixelLayout& layout, int algType, bool temporary) noexcept {
    const bool fromBytes = call.srcSampleSize == 1;
    if (fromBytes && call.params) call.params->normalizationEnable = 0;
    const auto convert = fromBytes ? Convert<uint8_t> : Convert<uint16_t>;
    uint32_t code = KvxResult_NoMemory;
    try {
        code = convert(call, layout, algType, temporary);
    } catch (const std::bad_alloc&) {
    }
    return KvxResult_Of(KvxComponentType_TrueSense, code);
}

}  // namespace kvx
