/**
 * @file
 * One-call TrueSense conversions, without a component.
 *
 * A function's name gives the channel order, the source samples (8u bytes, 16u words), the destination samples where
 * they differ (16u8u), and the layout: C1C3R for three channels out, C1C4R for four, of which the fourth is never
 * written.
 *
 * Arguments of the twelve typed functions:
 * - src: first sample of the top row of a source of `size` pixels, rows `srcLineStep` bytes apart; with a negative step
 *   the top row is the last one in memory
 * - roi: the region to convert; its first pixel goes to `dst`
 * - pixelDepth: significant bits per sample, right-aligned
 * - dst: first sample of the destination, rows `dstLineStep` bytes apart; the caller owns it. It may overlap the
 *   source, which is then copied first, at the cost of time and memory.
 *   With a negative step, pixel c of row r starts at dst + r x |dstLineStep| - c x p bytes, where p is the size of a
 *   pixel (3 or 4 samples): rows run downwards as usual, pixels from right to left. A row thus occupies the bytes from
 *   dst + r x |dstLineStep| - (width - 1) x p to dst + r x |dstLineStep| + p - 1. The first
 *   row starts (width - 1) x p bytes in front of `dst`.
 * - grid: the position of the region's first pixel in the base tile, 0 to 15 (PixelTypeToTruesenseGrid()); with a
 *   mirror flag, that of the pixel that was read first
 * - params: null for the defaults of TrueSense_DefaultValues(). The 8u functions set its `normalizationEnable` to 0
 *   before anything else.
 * - algType: KvxTrueSenseAlgorithm
 * - temporary: true creates a demosaicer for this call; any number of threads may call. false uses the function's own
 *   demosaicer, which keeps its working memory until the process ends: only one call of this function at a time in the
 *   whole process, and no allocation after the first frame of a geometry.
 *
 * Results: 0; 0x80060007 grid, depth, geometry or algorithm not supported; 0x80060008 null source or destination;
 * 0x80060009 out of memory, or a region without pixels. A call that fails leaves the destination unchanged.
 */
#ifndef KVXDEMOSAICING_KVXTRUESENSEFLAT_H
#define KVXDEMOSAICING_KVXTRUESENSEFLAT_H

#include "KvxDemosaicing/KvxTrueSense.h"

KVX_EXTERN_C_BEGIN

/** @{ Converts one frame by the rules above. */
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
 * Converts between two records by the typed function for their formats. The region is the whole frame.
 *
 * 8-bit sources: "RGB8", "BGR8", "RGBa8", "BGRa8" by the 8u functions. 10 to 14 bits: the same by the 16u8u functions,
 * "RGB10" to "RGB16" and "BGR10" to "BGR16" by the 16u three-channel functions.
 *
 * @param src,dst as for KvxTrueSense_ConvertImage()
 * @param params,algType,temporary as above
 * @return as above; 0x80060007 also for a null record, a source that is not TrueSense, any other destination, and line
 *         steps above INT_MAX
 */
KVX_API uint32_t TrueSenseToColor(const _KvxImage* src, _KvxImage* dst, tagTrueSenseParam* params, int algType,
                                  unsigned char temporary) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
