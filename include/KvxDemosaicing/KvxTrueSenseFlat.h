/**
 * @file
 * One-call TrueSense conversions, without a component.
 *
 * A name gives the channel order, the source samples (8u bytes, 16u words), the destination samples where they differ
 * (16u8u), and the layout: C1C3R three channels out, C1C4R four, the fourth of which is never written.
 *
 * Arguments of the twelve typed functions:
 * - src: first sample of the top row of a source of `size` pixels, rows `srcLineStep` bytes apart; with a negative step
 *   the top row is the last one in memory
 * - roi: what to convert; its first pixel goes to `dst`
 * - pixelDepth: significant bits per sample, right-aligned
 * - dst: first sample of the destination, rows `dstLineStep` bytes apart; the caller owns it; no overlap with the
 *   source. A negative step steps rows by its magnitude and pixels backwards.
 * - grid: the place of the region's first pixel in the base tile, 0 to 15 (PixelTypeToTruesenseGrid()); with a mirror
 *   flag, of the pixel that was read first
 * - params: null for the defaults of TrueSense_DefaultValues(). The 8u functions write 0 into its `normalizationEnable`
 *   before anything else: bytes are never deepened.
 * - algType: KvxTrueSenseAlgorithm
 * - temporary: true makes a demosaicer for this call alone, and any number of threads may call; false uses the
 *   function's own one of the algorithm, which keeps its working memory until the library is unloaded: one call of this
 *   function at a time in the whole process, no allocation after the first frame of a geometry, but by OpenCV in
 *   algorithm 2.
 *
 * Results: 0; 0x80060007 grid, depth, geometry or algorithm that is not supported; 0x80060008 null source or
 * destination; 0x80060009 no memory, or an empty region. What is refused leaves the destination as it was.
 */
#ifndef KVXDEMOSAICING_KVXTRUESENSEFLAT_H
#define KVXDEMOSAICING_KVXTRUESENSEFLAT_H

#include "KvxDemosaicing/KvxTrueSense.h"

KVX_EXTERN_C_BEGIN

/** @{ One frame by the arguments and rules above. */
KVX_API uint32_t TrueSenseToRGB_8u_C1C3R(const uint8_t* src, _KvxRect roi, _KvxSize size, int srcLineStep,
                                         int pixelDepth, uint8_t* dst, int dstLineStep, unsigned char grid,
                                         tagTrueSenseParam* params, int algType, bool temporary) KVX_NOEXCEPT;
KVX_API uint32_t TrueSenseToBGR_8u_C1C3R(const uint8_t* src, _KvxRect roi, _KvxSize size, int srcLineStep,
                                         int pixelDepth, uint8_t* dst, int dstLineStep, unsigned char grid,
                                         tagTrueSenseParam* params, int algType, bool temporary) KVX_NOEXCEPT;
KVX_API uint32_t TrueSenseToRGB_8u_C1C4R(const uint8_t* src, _KvxRect roi, _KvxSize size, int srcLineStep,
                                         int pixelDepth, uint8_t* dst, int dstLineStep, unsigned char grid,
                                         tagTrueSenseParam* params, int algType, bool temporary) KVX_NOEXCEPT;
KVX_API uint32_t TrueSenseToBGR_8u_C1C4R(const uint8_t* src, _KvxRect roi, _KvxSize size, int srcLineStep,
                                         int pixelDepth, uint8_t* dst, int dstLineStep, unsigned char grid,
                                         tagTrueSenseParam* params, int algType, bool temporary) KVX_NOEXCEPT;
KVX_API uint32_t TrueSenseToRGB_16u8u_C1C3R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep,
                                            int pixelDepth, uint8_t* dst, int dstLineStep, unsigned char grid,
                                            tagTrueSenseParam* params, int algType, bool temporary) KVX_NOEXCEPT;
KVX_API uint32_t TrueSenseToBGR_16u8u_C1C3R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep,
                                            int pixelDepth, uint8_t* dst, int dstLineStep, unsigned char grid,
                                            tagTrueSenseParam* params, int algType, bool temporary) KVX_NOEXCEPT;
KVX_API uint32_t TrueSenseToRGB_16u8u_C1C4R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep,
                                            int pixelDepth, uint8_t* dst, int dstLineStep, unsigned char grid,
                                            tagTrueSenseParam* params, int algType, bool temporary) KVX_NOEXCEPT;
KVX_API uint32_t TrueSenseToBGR_16u8u_C1C4R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep,
                                            int pixelDepth, uint8_t* dst, int dstLineStep, unsigned char grid,
                                            tagTrueSenseParam* params, int algType, bool temporary) KVX_NOEXCEPT;
KVX_API uint32_t TrueSenseToRGB_16u_C1C3R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep,
                                          int pixelDepth, uint16_t* dst, int dstLineStep, unsigned char grid,
                                          tagTrueSenseParam* params, int algType, bool temporary) KVX_NOEXCEPT;
KVX_API uint32_t TrueSenseToBGR_16u_C1C3R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep,
                                          int pixelDepth, uint16_t* dst, int dstLineStep, unsigned char grid,
                                          tagTrueSenseParam* params, int algType, bool temporary) KVX_NOEXCEPT;
KVX_API uint32_t TrueSenseToRGB_16u_C1C4R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep,
                                          int pixelDepth, uint16_t* dst, int dstLineStep, unsigned char grid,
                                          tagTrueSenseParam* params, int algType, bool temporary) KVX_NOEXCEPT;
KVX_API uint32_t TrueSenseToBGR_16u_C1C4R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep,
                                          int pixelDepth, uint16_t* dst, int dstLineStep, unsigned char grid,
                                          tagTrueSenseParam* params, int algType, bool temporary) KVX_NOEXCEPT;
/** @} */

/**
 * Converts between two records by the typed function that fits them.
 *
 * 8-bit sources: "RGB8", "BGR8", "RGBa8", "BGRa8" by the 8u functions. 10 to 14 bits: the same by the 16u8u functions,
 * "RGB10" to "RGB16" and "BGR10" to "BGR16" by the 16u three-channel ones. The region is the whole frame.
 *
 * @param src,dst as for KvxTrueSense_ConvertImage()
 * @param params,algType,temporary as above
 * @return as above; 0x80060007 also for null records, sources that are not TrueSense, other destinations and line steps
 *         past INT_MAX
 */
KVX_API uint32_t TrueSenseToColor(const _KvxImage* src, _KvxImage* dst, tagTrueSenseParam* params, int algType,
                                  unsigned char temporary) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
