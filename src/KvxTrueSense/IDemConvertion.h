/** The interfaces of all TrueSense demosaicers. The order of their virtual functions is fixed. */
#pragma once

#include "KvxDemosaicing/KvxImage.h"
#include "KvxDemosaicing/KvxTrueSense.h"

namespace kvx {

/** Life cycle and identity of a demosaicer. */
class IDemosaicing {
public:
    virtual ~IDemosaicing() = default;
    /** Releases the working memory and forgets the geometry; the next Init() allocates again. */
    virtual void CleanMemory() noexcept = 0;
    /** True when `other` is this very object. */
    virtual bool IsThis(IDemosaicing* other) noexcept = 0;
};

/**
 * The conversion itself, for sources of samples T: unsigned char (8 bits) or unsigned short.
 *
 * One conversion: SetOutputPixelType(), Init() and Calculate(), or InitRGB() and CalculateRGB() for a 16-bit source
 * and an 8-bit destination. The source is read and the destination is written by the second call of a pair; both
 * buffers belong to the caller. Where they overlap, the second call makes a private copy of what it reads. One
 * conversion at a time.
 *
 * Results of all four: 0; 7 grid, depth or geometry that is not supported, or a second call without a successful first
 * one; 8 null source or destination; 9 no working memory, or an empty region. What is refused leaves the destination as
 * it was.
 */
template <class T>
class IDemConvertion {
public:
    virtual ~IDemConvertion() = default;
    /**
     * Four channels instead of three, the fourth of which is never written; blue first instead of red first. Takes
     * effect with the next Calculate() or CalculateRGB(), which refuses rows that cannot hold four channels.
     */
    virtual void SetOutputPixelType(bool withAlpha, bool bgrOrder) noexcept = 0;
    /**
     * Checks and keeps all arguments, and allocates the working memory.
     *
     * @param src first sample of the top row of a source of `size` pixels, rows `srcLineStep` bytes apart
     * @param roi what to convert; its first pixel goes to `dst`. The noise-reducing classes also read the pixels of the
     *        source around it.
     * @param pixelDepth significant bits per sample
     * @param dstLineStep bytes from row to row. A negative value steps rows by its magnitude and pixels backwards: the
     *        first pixel at `dst` is the last one of its row in memory. Mirror flags apply on top.
     * @param grid place of the region's first pixel in the base tile, 0 to 15
     * @param params read here only; null for the defaults
     */
    virtual int Init(const T* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth, T* dst,
                     int dstLineStep, unsigned char grid, tagTrueSenseParam* params) noexcept = 0;
    virtual int Calculate() noexcept = 0;
    virtual int InitRGB(const unsigned short* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                        unsigned char* dst, int dstLineStep, unsigned char grid,
                        tagTrueSenseParam* params) noexcept = 0;
    virtual int CalculateRGB() noexcept = 0;
};

}  // namespace kvx
