#pragma once

#include <string>

#include "KvxFrame/Format.h"
#include "tools/look/Paint.h"

namespace kvx::tool {

/** A format in words, such as "Bayer, 12 bits, packed (PFNC)". */
std::string DescribeFormat(const frame::Format& format);

/** The filters of a mosaic's tile, or a colour pixel's samples in their order; a line for each row. */
std::string DrawTile(const frame::Format& format, const Paint& paint);

/**
 * Where the bits of the first samples are: a line for each byte of a group, bit 7 on the left. Samples are called a, b,
 * c and d; "-" is unused. Empty where a sample is a byte, and for colour.
 */
std::string DrawBits(const frame::Format& format, const Paint& paint);

}  // namespace kvx::tool
