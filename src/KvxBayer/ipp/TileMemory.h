/** A thread's working memory: rings of rows, so that a tile of any height stays in the cache. */
#pragma once

#include <hwy/aligned_allocator.h>

#include "KvxBayer/ipp/ColourRow.h"
#include "KvxBayer/ipp/GreenRow.h"
#include "KvxBayer/ipp/Method.h"
#include "KvxBayer/ipp/SlopeRow.h"

namespace kvx::ipp {

/** Lanes of a row of a tile at most. Kept columns and margin: 2 x lanes. */
constexpr int kMaxLanes = 544;
/** Lanes at each end that are computed only for the kept ones. */
constexpr int kMarginLanes = kReach / 2 + 1;

/** How many rows behind the intake each step works. A step's ring holds its rows until the last reader has passed. */
enum Lag {
    kMosaicLag = 0,
    kDifferenceLag = 2,
    kSmoothLag = 4,
    kActivityLag = 6,
    kDirectionLag = 8,
    kGreenLag = 10,
    kProductsLag = 12,
    kSlopeLag = 14,
    kOtherLag = 15,
    kOutputLag = 18
};

/** Cuts memory into rows; given no memory, it only counts them. */
class RowCarver {
public:
    explicit RowCarver(float* memory) : m_memory(memory) {}
    float* Take(int rows) {
        float* taken = m_memory ? m_memory + static_cast<size_t>(m_rows) * kRowFloats : nullptr;
        m_rows += rows;
        return taken;
    }
    size_t Floats() const {
        return static_cast<size_t>(m_rows) * kRowFloats;
    }

    static constexpr size_t kRowFloats = kLanePadding + kMaxLanes + kLaneBlock + kLanePadding;

private:
    float* m_memory;
    int m_rows = 0;
};

/** The last `count` rows of a plane, by row number. */
class Ring {
public:
    Ring(RowCarver& memory, int count) : m_rows(memory.Take(count)), m_count(count) {}
    float* operator[](int row) const {
        return m_rows + static_cast<size_t>(row % m_count) * RowCarver::kRowFloats + kLanePadding;
    }

private:
    float* m_rows;
    int m_count;
};

struct PairRing {
    Ring even, odd;
    PairRing(RowCarver& memory, int count) : even(memory, count), odd(memory, count) {}
    PairRow operator[](int row) const {
        return {even[row], odd[row]};
    }
};

struct ActivityRing {
    Ring gradient, change, noise;
    ActivityRing(RowCarver& memory, int count) : gradient(memory, count), change(memory, count), noise(memory, count) {}
    Activity operator[](int row) const {
        return {gradient[row], change[row], noise[row]};
    }
};

struct DirectionRing {
    Ring cost, local;
    DirectionRing(RowCarver& memory, int count) : cost(memory, count), local(memory, count) {}
    Direction operator[](int row) const {
        return {cost[row], local[row]};
    }
};

struct ProductsRing {
    Ring mixed, green;
    ProductsRing(RowCarver& memory, int count) : mixed(memory, count), green(memory, count) {}
    StepProducts operator[](int row) const {
        return {mixed[row], green[row]};
    }
};

/** The rows that steps pass to later steps. Ring size: lag of the last reader + rows it reads above - own lag + 1. */
struct TilePlanes {
    explicit TilePlanes(float* memory) : carver(memory) {}

    RowCarver carver;
    PairRing mosaic{carver, kOutputLag + 1};
    PairRing horizontal{carver, kGreenLag - kDifferenceLag + 1};
    PairRing vertical{carver, kGreenLag + 4 - kDifferenceLag + 1};
    Ring smooth{carver, kActivityLag + 2 - kSmoothLag + 1};
    ActivityRing horizontalActivity{carver, kDirectionLag + 2 - kActivityLag + 1};
    ActivityRing verticalActivity{carver, kDirectionLag + 2 - kActivityLag + 1};
    DirectionRing alongRow{carver, kGreenLag - kDirectionLag + 1};
    DirectionRing downColumns{carver, kGreenLag + 2 - kDirectionLag + 1};
    Ring green{carver, kOutputLag + 1 - kGreenLag + 1};
    Ring own{carver, kOutputLag + 3 - kGreenLag + 1};
    ProductsRing products{carver, kSlopeLag + 4 - kProductsLag + 1};
    Ring slope{carver, kOutputLag + 1 - kSlopeLag + 1};
    Ring other{carver, kOutputLag + 3 - kOtherLag + 1};
    // Working memory of single steps.
    Ring smoothAlongRow{carver, 1};
    ActivityRing evenSums{carver, 1}, betweenSums{carver, 1};
    ProductsRing scratchProducts{carver, 1};
    PairRing ownChannel{carver, 1}, otherChannel{carver, 1};
};

}  // namespace kvx::ipp
