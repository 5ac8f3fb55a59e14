/** Frames of one row or one column, brought to the two that the pattern needs. */
#pragma once

#include <vector>

#include "KvxBayer/ipp/Source.h"

namespace kvx::ipp {

class NarrowFrame {
public:
    /**
     * The frame itself where it has two rows and columns; else a copy with a second row or column, whose green sites
     * take the nearest green sample and whose others that of the sample beside them: a colour that the frame has is
     * right, and one that it has not follows green.
     * @throws std::bad_alloc
     */
    Source Widened(const Source& source);

private:
    std::vector<uint8_t> m_samples;  // kept for the next frame
};

}  // namespace kvx::ipp
