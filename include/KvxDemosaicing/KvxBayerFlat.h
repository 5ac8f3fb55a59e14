/**
 * @file
 * One-call Bayer conversions, without a component.
 *
 * A name gives the channel order, the source samples (8u bytes, 16u words), the destination samples where they differ
 * (16u8u), and the layout: C1C3R one channel in, three out; C1C4R see below.
 *
 * Arguments of the twelve typed functions:
 * - pSrc: first sample of the top row; `srcSize.height` rows of `srcStep` bytes, samples right-aligned
 * - srcRoi: `width` and `height` are the destination's size and must equal the source's; `x` and `y` are ignored
 * - srcSize: size of the source in pixels
 * - srcStep, dstStep: bytes from row to row; any value that holds a row
 * - pixelDepth: significant bits per sample; the 16u and 16u8u functions take 10, 12, 14 or 16. In the 8u functions the
 *   in-house algorithm alone looks at it, as at _KvxImage::pixelDepth.
 * - pDst: first sample of the top destination row; the caller owns it; it must not overlap the source
 * - bayerPattern: first two sites of the top row: 0 = GR, 1 = RG, 2 = BG, 3 = GB
 * - algType: KvxBayerAlgorithm; a value other than 0, 1 and 2 converts nothing and returns 0, if pattern and depth are
 *   right; the other arguments are not looked at
 *
 * Output:
 * - 8u and 16u: `width` pixels of three samples in each row; the 16u samples keep the source's depth. The C4R names
 *   are the same functions again: three samples per pixel, no alpha.
 * - 16u8u C3R: the 16u result, each sample shifted right by pixelDepth - 8, of which the low byte is kept.
 * - 16u8u C4R: a row has four bytes for each pixel: the first 3 x width are the picture of the C3R function, the last
 *   `width` are zero. Where dstStep is shorter than that, the row ends with it.
 *
 * Results, of all of them: 0; 0x80050001 a frame without pixels; 0x80050007 null data, unknown pattern or depth, sizes
 * of source and region that differ, a step that cannot hold a row, a size past INT_MAX; 0x80050009 no working memory
 * for the in-house algorithm. Whatever is refused leaves the destination as it was. The functions keep no state and may
 * run in any number of threads.
 */
#ifndef KVXDEMOSAICING_KVXBAYERFLAT_H
#define KVXDEMOSAICING_KVXBAYERFLAT_H

#include "KvxDemosaicing/KvxImage.h"
#include "KvxDemosaicing/KvxResult.h"

KVX_EXTERN_C_BEGIN

/** @{ One frame by the arguments and rules above. */
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
/** @} */

/**
 * Converts between two records, as the typed functions do.
 *
 * The channel order is blue-first for the BGR formats, red-first for any other destination. An 8-bit source writes
 * bytes. A 16-bit source writes 16-bit samples, unless the destination is of depth class 8 bits: then the samples are
 * scaled by 2^-(bits - 8) of the source format, rounded to nearest even and saturated.
 *
 * @param src,dst as for KvxBayer_ConvertImage()
 * @param algType as above
 * @return as above; 0x80050007 also for null records and sources that are not an unpacked Bayer format
 */
KVX_API uint32_t BayerToColor(const _KvxImage* src, _KvxImage* dst, int algType) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
