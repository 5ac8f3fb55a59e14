/**
 * @file
 * The records that describe an image, a region and a size.
 */
#ifndef KVXDEMOSAICING_KVXIMAGE_H
#define KVXDEMOSAICING_KVXIMAGE_H

#include "KvxDemosaicing/KvxApi.h"

/**
 * One image: a raw frame or a picture. The caller fills the record, for example with KvxImage_Make(), and owns the
 * pixel buffer.
 *
 * A sample is one byte (8-bit formats) or one little-endian 16-bit word with the value right-aligned. Conversions read
 * `pixelType`, `pixelDepth`, `width`, `height`, `lineStep` and `data`; callers set all other fields to zero.
 */
typedef struct _KvxImage {
    uint32_t structSize;    /**< size of this record in bytes: 96 */
    uint32_t structVersion; /**< KVX_IMAGE_VERSION */
    uint32_t pixelType;     /**< pixel-type code, one of KvxFormat_... (KvxPixelFormat.h) */
    uint32_t pixelDepth;    /**< significant bits per sample, for example 10 for a 10-bit sensor */
    uint8_t reserved16[20]; /**< zero */
    uint32_t width;         /**< pixels in a row */
    uint32_t height;        /**< rows */
    uint32_t imageSize;     /**< bytes in the buffer: height x lineStep */
    uint32_t lineStep;      /**< bytes from the start of one row to the start of the next */
    uint8_t reserved52[28]; /**< zero */
    void* data;             /**< first byte of the top row; the data of a source is only read */
    uint8_t reserved88[8];  /**< zero */
} _KvxImage;

/** Value of _KvxImage::structVersion. */
#define KVX_IMAGE_VERSION 0x00020000u

/** A region of an image, in pixels. */
typedef struct _KvxRect {
    uint32_t x;      /**< columns left of the region */
    uint32_t y;      /**< rows above it */
    uint32_t width;  /**< columns */
    uint32_t height; /**< rows */
} _KvxRect;

/** The size of an image, in pixels. */
typedef struct _KvxSize {
    uint32_t width;  /**< columns */
    uint32_t height; /**< rows */
} _KvxSize;

static_assert(sizeof(_KvxImage) == 96, "the image record is part of the binary interface");
static_assert(offsetof(_KvxImage, pixelType) == 8 && offsetof(_KvxImage, reserved16) == 16 &&
                  offsetof(_KvxImage, width) == 36 && offsetof(_KvxImage, lineStep) == 48 &&
                  offsetof(_KvxImage, reserved52) == 52 && offsetof(_KvxImage, data) == 80 &&
                  offsetof(_KvxImage, reserved88) == 88,
              "the image record is part of the binary interface");
static_assert(sizeof(_KvxRect) == 16 && offsetof(_KvxRect, height) == 12, "passed by value through the C interface");
static_assert(sizeof(_KvxSize) == 8 && offsetof(_KvxSize, height) == 4, "passed by value through the C interface");

/**
 * A record with all fields set, for C and C++.
 *
 * `pixelDepth` is that of the format; a caller whose samples have fewer significant bits changes it afterwards.
 *
 * @param pixelType one of KvxFormat_... (KvxPixelFormat.h)
 * @param width,height pixels in a row, and rows
 * @param lineStep bytes from the start of one row to the start of the next
 * @param data first byte of the top row; stays the caller's
 */
static inline KVX_CONSTEXPR _KvxImage KvxImage_Make(uint32_t pixelType, uint32_t width, uint32_t height,
                                                    uint32_t lineStep, void* data) {
    const uint32_t depthClass = pixelType >> 8 & 0xF; /* 1 = 8 bits, 2 = 10, ... */
    const _KvxImage image = {sizeof(_KvxImage),
                             KVX_IMAGE_VERSION,
                             pixelType,
                             depthClass ? 2 * (depthClass + 3) : 0,
                             {0},
                             width,
                             height,
                             height * lineStep,
                             lineStep,
                             {0},
                             data,
                             {0}};
    return image;
}

#ifdef __cplusplus
/** True when all four fields are equal. */
inline bool operator==(const _KvxRect& a, const _KvxRect& b) noexcept {
    return a.x == b.x && a.y == b.y && a.width == b.width && a.height == b.height;
}
/** True when a field differs. */
inline bool operator!=(const _KvxRect& a, const _KvxRect& b) noexcept {
    return !(a == b);
}
/** True when both fields are equal. */
inline bool operator==(const _KvxSize& a, const _KvxSize& b) noexcept {
    return a.width == b.width && a.height == b.height;
}
/** True when a field differs. */
inline bool operator!=(const _KvxSize& a, const _KvxSize& b) noexcept {
    return !(a == b);
}
#endif

#endif
