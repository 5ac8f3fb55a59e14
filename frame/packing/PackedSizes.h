/** Sizes and validity of packed images. */
#pragma once

#include "KvxFrame/Packing.h"

namespace kvx::frame {

void CheckPacking(Packing packing);

/** Refuses an image that is invalid or larger than `size` bytes. */
void CheckImageFits(const PackedImage& image, size_t size);

/** Whether each row of a valid image starts with a group; otherwise the image is one sequence. */
bool RowsStartGroups(const PackedImage& image);

/** Bytes between the rows of a valid image whose rows start with a group. */
size_t LineStepOf(const PackedImage& image);

}  // namespace kvx::frame
