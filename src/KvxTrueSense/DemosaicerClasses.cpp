#include "KvxTrueSense/DemosaicerClasses.h"

#include "demosaicers/denoising/TrueSenseKodak.h"
#include "demosaicers/denoising/TrueSenseKodakLike.h"
#include "demosaicers/denoising/TrueSenseSimple.h"
#include "demosaicers/interpolation/TrueSenseBayerLike.h"
#include "demosaicers/interpolation/TrueSenseToRgb.h"

namespace kvx {
namespace {

template <class T, template <class> class Demosaicer>
constexpr DemosaicerClass<T> s_class = {
    [] { return std::unique_ptr<TrueSenseDemosaicer<T>>(std::make_unique<Demosaicer<T>>()); },
    [](const TrueSenseDemosaicer<T>* object) { return dynamic_cast<const Demosaicer<T>*>(object) != nullptr; }};

}  // namespace

template <class T>
const DemosaicerClass<T>* DemosaicerClassOf(int64_t algorithm) noexcept {
    switch (algorithm) {
        case KvxTrueSenseAlgorithm_Fast:
            return &s_class<T, TrueSenseToRgb>;
        case KvxTrueSenseAlgorithm_Simple:
            return &s_class<T, TrueSenseSimple>;
        case KvxTrueSenseAlgorithm_BayerLike:
            return &s_class<T, TrueSenseBayerLike>;
        case KvxTrueSenseAlgorithm_KodakLike:
            return &s_class<T, TrueSenseKodakLike>;
        case KvxTrueSenseAlgorithm_Kodak:
            return &s_class<T, TrueSenseKodak>;
        default:
            return nullptr;
    }
}

template const DemosaicerClass<unsigned char>* DemosaicerClassOf(int64_t) noexcept;
template const DemosaicerClass<unsigned short>* DemosaicerClassOf(int64_t) noexcept;

}  // namespace kvx
