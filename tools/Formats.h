#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "KvxDemosaicing/KvxPixelFormat.h"

namespace kvx::tool {

using PixelFormat = _KvxPixelFormat;

/** The library's table, in its order. */
const std::vector<const PixelFormat*>& AllFormats();

/** The format with this name, in any naming scheme. Throws ExitCode::Usage with the nearest names. */
const PixelFormat& RequireFormat(const std::string& name);

/** One colour sample at each pixel, in a byte or word of its own: what `mosaic` can write. */
bool IsUnpackedMosaic(const PixelFormat& format);

/** Unpacked Bayer or TrueSense: what `convert` reads. */
bool IsConvertSource(const PixelFormat& format);

bool IsTrueSense(const PixelFormat& format);

/** Unpacked three-channel colour: what `convert` makes. */
bool IsConvertDestination(const PixelFormat& format);

/** Whether `convert` makes `destination` from `source`, two formats that the predicates above accept. */
bool CanConvert(const PixelFormat& source, const PixelFormat& destination);

bool IsBlueFirst(const PixelFormat& colour);

/** White: all bits of the depth set. */
uint32_t LargestSample(const PixelFormat& format);

/** 1 or 2; for unpacked formats. */
uint32_t BytesPerSample(const PixelFormat& format);

/** The mosaic format of the same colours, phase and packing with `bits` bits, or null. */
const PixelFormat* WithDepth(const PixelFormat& format, uint32_t bits);

}  // namespace kvx::tool
