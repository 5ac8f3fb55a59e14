/**
 * @file
 * Pixel formats in C: their names, codes and sizes. Format.h explains them. Any thread may call these functions.
 */
#ifndef KVXFRAME_FORMATC_H
#define KVXFRAME_FORMATC_H

#include "KvxFrame/ErrorC.h"

/** Kind of a pixel, kvx::frame::Family. */
enum KvxFrameFamily {
    KvxFrameFamily_Mono = 0,      /**< one sample, no colour filter */
    KvxFrameFamily_Bayer = 1,     /**< one sample behind a filter of a 2x2 tile */
    KvxFrameFamily_TrueSense = 2, /**< one sample behind a filter of a 4x4 tile, half of which is clear */
    KvxFrameFamily_Colour = 3     /**< three or four samples */
};

/** How samples are stored in memory, kvx::frame::Layout. */
enum KvxFrameLayout {
    KvxFrameLayout_Plain = 0,      /**< bytes for 8 bits, otherwise little-endian 16-bit words, right-aligned */
    KvxFrameLayout_MsbAligned = 1, /**< little-endian 16-bit words, left-aligned */
    KvxFrameLayout_BigEndian = 2,  /**< big-endian 16-bit words, right-aligned */
    KvxFrameLayout_Pfnc = 3,       /**< PFNC 10p, 12p, 14p */
    KvxFrameLayout_GigE = 4,       /**< GigE Vision 10Packed, 12Packed */
    KvxFrameLayout_Mipi = 5        /**< MIPI CSI-2 RAW10, RAW12, RAW14 */
};

/** Order of the samples of a colour pixel in memory, kvx::frame::Order. */
enum KvxFrameOrder {
    KvxFrameOrder_Rgb = 0,
    KvxFrameOrder_Bgr = 1,
    KvxFrameOrder_Rgba = 2,
    KvxFrameOrder_Bgra = 3,
    KvxFrameOrder_Rgbx = 4,
    KvxFrameOrder_Bgrx = 5
};

/** Naming scheme, kvx::frame::Scheme. */
enum KvxFrameScheme {
    KvxFrameScheme_Library = 0,
    KvxFrameScheme_Pfnc = 1,
    KvxFrameScheme_Frame = 2,
    KvxFrameScheme_GStreamer = 3,
    KvxFrameScheme_V4l2 = 4,
    KvxFrameScheme_OpenCv = 5
};

/** A pixel format, kvx::frame::Format. Functions that take one refuse fields that do not fit each other (0x80070007).
 */
typedef struct KvxFrameFormat {
    uint8_t family; /**< KvxFrameFamily */
    uint8_t bits;   /**< significant bits of a sample: 8, 10, 12, 14 or 16 */
    uint8_t layout; /**< KvxFrameLayout; 0 gives the format of unpacked samples */
    uint8_t phase;  /**< position of the first pixel in the tile: 0 to 3 for Bayer, 0 to 15 for TrueSense */
    uint8_t order;  /**< KvxFrameOrder; 0 except for colour */
} KvxFrameFormat;

static_assert(sizeof(KvxFrameFormat) == 5, "records are part of the binary interface");

KVX_EXTERN_C_BEGIN

/** The format with a name of any scheme. @return 0; 0x80070002 unknown: the sentence suggests similar names */
KVX_API uint32_t KvxFrame_FormatByName(const char* name, KvxFrameFormat* format) KVX_NOEXCEPT;

/**
 * @{
 * The format with a PFNC code (GenICam's "PixelFormat"), a V4L2 code (v4l2_fourcc(a, b, c, d)) or a pixel-type code of
 * the library (KvxPixelFormat.h). @return 0; 0x80070002 unknown
 */
KVX_API uint32_t KvxFrame_FormatByPfncCode(uint32_t code, KvxFrameFormat* format) KVX_NOEXCEPT;
KVX_API uint32_t KvxFrame_FormatByFourcc(uint32_t fourcc, KvxFrameFormat* format) KVX_NOEXCEPT;
KVX_API uint32_t KvxFrame_FormatByLibraryCode(uint32_t pixelType, KvxFrameFormat* format) KVX_NOEXCEPT;
/** @} */

/** @{ The code of a format; 0 if it has none, or is invalid or null. */
KVX_API uint32_t KvxFrame_PfncCode(const KvxFrameFormat* format) KVX_NOEXCEPT;
KVX_API uint32_t KvxFrame_Fourcc(const KvxFrameFormat* format) KVX_NOEXCEPT;
KVX_API uint32_t KvxFrame_LibraryCode(const KvxFrameFormat* format) KVX_NOEXCEPT;
/** @} */

/** The number of valid formats. */
KVX_API uint32_t KvxFrame_FormatCount(void) KVX_NOEXCEPT;
/** The valid format at an index, from 0. @return 0; 0x80070002 for an index from KvxFrame_FormatCount() on */
KVX_API uint32_t KvxFrame_FormatAt(uint32_t index, KvxFrameFormat* format) KVX_NOEXCEPT;

/** The preferred name of a format. */
KVX_API uint32_t KvxFrame_FormatName(const KvxFrameFormat* format, char* buffer, uint32_t* size) KVX_NOEXCEPT;
/**
 * All names of a format, one by one.
 *
 * @param index  from 0 until the result is 0x80070002
 * @param scheme receives the KvxFrameScheme of the name; may be null
 */
KVX_API uint32_t KvxFrame_FormatNameAt(const KvxFrameFormat* format, uint32_t index, uint32_t* scheme, char* buffer,
                                       uint32_t* size) KVX_NOEXCEPT;

/** Bytes of a row of `width` pixels without padding; 0 for a format that is invalid or null. */
KVX_API uint64_t KvxFrame_RowBytes(const KvxFrameFormat* format, uint32_t width) KVX_NOEXCEPT;
/**
 * Bytes of `height` rows, without padding after the last one: the least capacity of a view.
 *
 * @param stride bytes from a row to the next; 0: rows follow each other without padding
 * @return 0 for a format that is invalid or null
 */
KVX_API uint64_t KvxFrame_ImageBytes(const KvxFrameFormat* format, uint32_t width, uint32_t height,
                                     ptrdiff_t stride) KVX_NOEXCEPT;
/** The filter at a site: 'R', 'G', 'B', 'W' (clear), 'Y' for mono; 0 for colour and an invalid or null format. */
KVX_API char KvxFrame_FilterAt(const KvxFrameFormat* format, uint32_t row, uint32_t column) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
