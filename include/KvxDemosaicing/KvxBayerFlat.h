/**
 * @file
 * One-call Bayer conversions, without a component.
 *
 * A function's name gives the channel order, the source samples (8u bytes, 16u words), the destination samples where
 * they differ (16u8u), and the layout: C1C3R for one channel in and three out; for C1C4R see below.
 *
 * Arguments of the typed functions:
 * - pSrc: first sample of the top row; `srcSize.height` rows, `srcStep` bytes apart; samples are right-aligned
 * - srcRoi: `width` and `height` must be the source's; `x` and `y` are ignored
 * - srcSize: size of the source in pixels
 * - srcStep, dstStep: bytes from row to row; any value that holds a row
 * - pixelDepth: significant bits per sample; 10, 12, 14 or 16 for the 16u and 16u8u functions. Of the 8u functions only
 *   the in-house algorithm reads it, as _KvxImage::pixelDepth.
 * - pDst: first sample of the top destination row; the caller owns it. It may overlap the source, which is then copied
 *   first, at the cost of time and memory.
 * - bayerPattern: first two sites of the top row: 0 = GR, 1 = RG, 2 = BG, 3 = GB
 * - algType: KvxBayerAlgorithm. With any other value the function converts nothing and returns 0, provided that pattern
 *   and depth are valid; the other arguments are not read.
 *
 * Output:
 * - 8u and 16u: `width` pixels of three samples in each row; the 16u samples have the source's depth. The C4R functions
 *   of RGB and BGR do the same as the C3R ones: three samples per pixel, no alpha.
 * - 16u8u C3R: the result of the 16u function, each sample shifted right by pixelDepth - 8; the low byte is kept.
 * - 16u8u C4R of RGB and BGR: a row has four bytes per pixel: 3 x width bytes as the C3R function writes them, then
 *   `width` zeros. If dstStep is shorter, the row ends there.
 * - RGBA and BGRA: `width` pixels of four bytes in each row: the three that the C3R function writes, and 255.
 *
 * Results: 0; 0x80050001 a frame without pixels; 0x80050007 null data, unknown pattern or depth, sizes of source and
 * region that differ, a step that does not hold a row, a size above INT_MAX, more than 2^30 rows for the in-house
 * algorithm; 0x80050009 out of memory. A call that fails leaves the destination unchanged. The functions keep no state;
 * any number of threads may call them.
 */
#ifndef KVXDEMOSAICING_KVXBAYERFLAT_H
#define KVXDEMOSAICING_KVXBAYERFLAT_H

#include "KvxDemosaicing/KvxImage.h"
#include "KvxDemosaicing/KvxResult.h"

KVX_EXTERN_C_BEGIN

/** @{ Converts one frame by the rules above. */
KVX_API uint32_t BayerToRGB_8u_C1C3R(const uint8_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                     int pixelDepth, uint8_t* pDst, int dstStep, uint8_t bayerPattern,
                                     int algType) KVX_NOEXCEPT;
KVX_API uint32_t BayerToBGR_8u_C1C3R(const uint8_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                     int pixelDepth, uint8_t* pDst, int dstStep, uint8_t bayerPattern,
                                     int algType) KVX_NOEXCEPT;
KVX_API uint32_t BayerToRGB_8u_C1C4R(const uint8_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                     int pixelDepth, uint8_t* pDst, int dstStep, uint8_t bayerPattern,
                                     int algType) KVX_NOEXCEPT;
KVX_API uint32_t BayerToBGR_8u_C1C4R(const uint8_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                     int pixelDepth, uint8_t* pDst, int dstStep, uint8_t bayerPattern,
                                     int algType) KVX_NOEXCEPT;
KVX_API uint32_t BayerToRGB_16u_C1C3R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                      int pixelDepth, uint16_t* pDst, int dstStep, uint8_t bayerPattern,
                                      int algType) KVX_NOEXCEPT;
KVX_API uint32_t BayerToBGR_16u_C1C3R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                      int pixelDepth, uint16_t* pDst, int dstStep, uint8_t bayerPattern,
                                      int algType) KVX_NOEXCEPT;
KVX_API uint32_t BayerToRGB_16u_C1C4R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                      int pixelDepth, uint16_t* pDst, int dstStep, uint8_t bayerPattern,
                                      int algType) KVX_NOEXCEPT;
KVX_API uint32_t BayerToBGR_16u_C1C4R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                      int pixelDepth, uint16_t* pDst, int dstStep, uint8_t bayerPattern,
                                      int algType) KVX_NOEXCEPT;
KVX_API uint32_t BayerToRGB_16u8u_C1C3R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                        int pixelDepth, uint8_t* pDst, int dstStep, uint8_t bayerPattern,
                                        int algType) KVX_NOEXCEPT;
KVX_API uint32_t BayerToBGR_16u8u_C1C3R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                        int pixelDepth, uint8_t* pDst, int dstStep, uint8_t bayerPattern,
                                        int algType) KVX_NOEXCEPT;
KVX_API uint32_t BayerToRGB_16u8u_C1C4R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                        int pixelDepth, uint8_t* pDst, int dstStep, uint8_t bayerPattern,
                                        int algType) KVX_NOEXCEPT;
KVX_API uint32_t BayerToBGR_16u8u_C1C4R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                        int pixelDepth, uint8_t* pDst, int dstStep, uint8_t bayerPattern,
                                        int algType) KVX_NOEXCEPT;
KVX_API uint32_t BayerToRGBA_8u_C1C4R(const uint8_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                      int pixelDepth, uint8_t* pDst, int dstStep, uint8_t bayerPattern,
                                      int algType) KVX_NOEXCEPT;
KVX_API uint32_t BayerToBGRA_8u_C1C4R(const uint8_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                      int pixelDepth, uint8_t* pDst, int dstStep, uint8_t bayerPattern,
                                      int algType) KVX_NOEXCEPT;
KVX_API uint32_t BayerToRGBA_16u8u_C1C4R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                         int pixelDepth, uint8_t* pDst, int dstStep, uint8_t bayerPattern,
                                         int algType) KVX_NOEXCEPT;
KVX_API uint32_t BayerToBGRA_16u8u_C1C4R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep,
                                         int pixelDepth, uint8_t* pDst, int dstStep, uint8_t bayerPattern,
                                         int algType) KVX_NOEXCEPT;
/** @} */

/**
 * Converts between two records as the typed functions do.
 *
 * The channel order is blue-first for the BGR formats and red-first for every other destination. 8-bit sources give
 * bytes. 16-bit sources give 16-bit samples; but if the destination's depth class is 8 bits, samples are scaled by
 * 2^-(bits of the source format - 8), rounded to nearest even and saturated.
 *
 * @param src,dst as for KvxBayer_ConvertImage(), of equal size
 * @param algType as above
 * @return as above; 0x80050007 also for a null record or a source that is not an unpacked Bayer format
 */
KVX_API uint32_t BayerToColor(const _KvxImage* src, _KvxImage* dst, int algType) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
