/** Which demosaicer an algorithm number selects. */
#pragma once

#include <cstdint>
#include <memory>

#include "demosaicers/frame/TrueSenseDemosaicer.h"

namespace kvx {

/** A class of demosaicers for samples T. */
template <class T>
struct DemosaicerClass {
    std::unique_ptr<TrueSenseDemosaicer<T>> (*make)();  ///< throws std::bad_alloc
    bool (*made)(const TrueSenseDemosaicer<T>*);        ///< true for an object of this class
};

/** Number of algorithms, and of classes. */
constexpr int kTrueSenseAlgorithms = 5;

/** The class that `algorithm` selects, or null when there is none. */
template <class T>
const DemosaicerClass<T>* DemosaicerClassOf(int64_t algorithm) noexcept;

}  // namespace kvx
