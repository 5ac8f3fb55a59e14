/** The fields of a pixel-type code. */
#pragma once

#include <array>
#include <cstdint>

#include "KvxDemosaicing/KvxPixelFormat.h"

namespace kvx {

constexpr uint32_t kColourModelMask = 0xFF000000;
constexpr uint32_t kRowMask = 0xFF;
/** Packing and depth class: equal in two codes whose samples are stored in the same way. */
constexpr uint32_t kStorageMask = 0xFF00;

constexpr uint32_t kMono = 0x01000000;
constexpr uint32_t kRgb = 0x02000000;
constexpr uint32_t kBayer = 0x03000000;
constexpr uint32_t kTrueSense = 0x04000000;
constexpr uint32_t kYuv = 0x05000000;

constexpr bool IsBayer(uint32_t pixelType) {
    return (pixelType & kColourModelMask) == kBayer;
}

/** Samples of one byte; all other Bayer and TrueSense formats have 16-bit words. */
constexpr bool Is8Bit(uint32_t pixelType) {
    return (pixelType & kStorageMask) == 0x0100;
}

/** Significant bits of a sample, by the depth class of the code. */
constexpr int BitsOf(uint32_t pixelType) {
    return 2 * static_cast<int>((pixelType >> 8 & 0xF) + 3);
}

/** 10 or 12 bits, unpacked. */
constexpr bool Is10Or12Bit(uint32_t pixelType) {
    return (pixelType & 0xFE00) == 0x0200;
}

/** The entry of g_isBGR for a blue-first format; all others are 0. */
constexpr uint8_t kBlueFirst = 5;

/** Marks blue-first formats, indexed by the low byte of a pixel-type code. */
extern const std::array<uint8_t, 256> g_isBGR;

inline bool IsBlueFirst(uint32_t pixelType) {
    return g_isBGR[pixelType & kRowMask] == kBlueFirst;
}

}  // namespace kvx
