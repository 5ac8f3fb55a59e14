/** Extends frames of one row or one column to the two that the pattern needs. */
#pragma once

#include <vector>

#include "KvxBayer/ipp/Source.h"

namespace kvx::ipp {

class NarrowFrame {
public:
    /**
     * The frame itself if it has two rows and columns; else a copy with a second row or column. Its green sites take
     * the nearest green sample, the others their neighbour's sample: colours that the frame has are kept, and a missing
     * one follows green.
     * @throws std::bad_alloc
     */
    Source Widened(const Source& source);

private:
    std::vector<uint8_t> m_samples;  // kept for the next frame
};

}  // namespace kvx::ipp
