/**
 * @file
 * Pixel-type codes, and the table that describes the 133 formats.
 *
 * | bits  | meaning of a pixel-type code                                                                 |
 * |-------|----------------------------------------------------------------------------------------------|
 * | 24-31 | colour model: 1 mono, 2 RGB family, 3 Bayer, 4 TrueSense, 5 YUV family                       |
 * | 16-23 | bits that one pixel occupies in memory                                                       |
 * | 12-15 | packing: 0 one sample per byte or 16-bit word, 1 "Packed", 2 tight "p", 3 "FLEX" packings     |
 * | 8-11  | depth class: 1 = 8 bits, 2 = 10, 3 = 12, 4 = 14, 5 = 16                                      |
 * | 0-7   | the format's one-based row in the table                                                      |
 */
#ifndef KVXDEMOSAICING_KVXPIXELFORMAT_H
#define KVXDEMOSAICING_KVXPIXELFORMAT_H

#include "KvxDemosaicing/KvxApi.h"

/**
 * The pixel-type codes: format names with the prefix KvxFormat_.
 *
 * A Bayer name gives the first two sites of the top row: GR = "G R / B G". A TrueSense name gives the colours of the
 * 4x4 tile, the phase 0 to 3 (bit 0: one column to the right; bit 1: one row down) and the depth.
 */
enum KvxPixelType {
    KvxFormat_Mono8 = 0x01080101,
    KvxFormat_Mono10 = 0x01100202,
    KvxFormat_Mono10p = 0x010A2203,
    KvxFormat_Mono10Packed = 0x010C1204,
    KvxFormat_Mono10_FLExPacked = 0x010C3205,
    KvxFormat_Mono12 = 0x01100306,
    KvxFormat_Mono12p = 0x010C2307,
    KvxFormat_Mono12Packed = 0x010C1308,
    KvxFormat_Mono12_FLExPacked = 0x010C3309,
    KvxFormat_Mono14 = 0x0110040A,
    KvxFormat_Mono16 = 0x0110050B,
    KvxFormat_Mono8_FLExPacked = 0x0108310C,
    KvxFormat_BayerGR8 = 0x0308010D,
    KvxFormat_BayerRG8 = 0x0308010E,
    KvxFormat_BayerGB8 = 0x0308010F,
    KvxFormat_BayerBG8 = 0x03080110,
    KvxFormat_BayerGR10 = 0x03100211,
    KvxFormat_BayerRG10 = 0x03100212,
    KvxFormat_BayerGB10 = 0x03100213,
    KvxFormat_BayerBG10 = 0x03100214,
    KvxFormat_BayerGR12 = 0x03100315,
    KvxFormat_BayerRG12 = 0x03100316,
    KvxFormat_BayerGB12 = 0x03100317,
    KvxFormat_BayerBG12 = 0x03100318,
    KvxFormat_BayerGR10p = 0x030A2219,
    KvxFormat_BayerGR10Packed = 0x030C121A,
    KvxFormat_BayerRG10p = 0x030A221B,
    KvxFormat_BayerRG10Packed = 0x030C121C,
    KvxFormat_BayerGB10p = 0x030A221D,
    KvxFormat_BayerGB10Packed = 0x030C121E,
    KvxFormat_BayerBG10p = 0x030A221F,
    KvxFormat_BayerBG10Packed = 0x030C1220,
    KvxFormat_BayerGR12p = 0x030C2321,
    KvxFormat_BayerGR12Packed = 0x030C1322,
    KvxFormat_BayerRG12p = 0x030C2323,
    KvxFormat_BayerRG12Packed = 0x030C1324,
    KvxFormat_BayerGB12p = 0x030C2325,
    KvxFormat_BayerGB12Packed = 0x030C1326,
    KvxFormat_BayerBG12p = 0x030C2327,
    KvxFormat_BayerBG12Packed = 0x030C1328,
    KvxFormat_BayerGR14 = 0x03100429,
    KvxFormat_BayerRG14 = 0x0310042A,
    KvxFormat_BayerGB14 = 0x0310042B,
    KvxFormat_BayerBG14 = 0x0310042C,
    KvxFormat_BayerGR16 = 0x0310052D,
    KvxFormat_BayerRG16 = 0x0310052E,
    KvxFormat_BayerGB16 = 0x0310052F,
    KvxFormat_BayerBG16 = 0x03100530,
    KvxFormat_TrueSense_BGGR_WBBW_0_8 = 0x04080131,
    KvxFormat_TrueSense_BGGR_WBBW_1_8 = 0x04080132,
    KvxFormat_TrueSense_BGGR_WBBW_2_8 = 0x04080133,
    KvxFormat_TrueSense_BGGR_WBBW_3_8 = 0x04080134,
    KvxFormat_TrueSense_GBRG_WGGW_0_8 = 0x04080135,
    KvxFormat_TrueSense_GBRG_WGGW_1_8 = 0x04080136,
    KvxFormat_TrueSense_GBRG_WGGW_2_8 = 0x04080137,
    KvxFormat_TrueSense_GBRG_WGGW_3_8 = 0x04080138,
    KvxFormat_TrueSense_GRBG_WGGW_0_8 = 0x04080139,
    KvxFormat_TrueSense_GRBG_WGGW_1_8 = 0x0408013A,
    KvxFormat_TrueSense_GRBG_WGGW_2_8 = 0x0408013B,
    KvxFormat_TrueSense_GRBG_WGGW_3_8 = 0x0408013C,
    KvxFormat_TrueSense_RGGB_WRRW_0_8 = 0x0408013D,
    KvxFormat_TrueSense_RGGB_WRRW_1_8 = 0x0408013E,
    KvxFormat_TrueSense_RGGB_WRRW_2_8 = 0x0408013F,
    KvxFormat_TrueSense_RGGB_WRRW_3_8 = 0x04080140,
    KvxFormat_TrueSense_BGGR_WBBW_0_10 = 0x04100241,
    KvxFormat_TrueSense_BGGR_WBBW_1_10 = 0x04100242,
    KvxFormat_TrueSense_BGGR_WBBW_2_10 = 0x04100243,
    KvxFormat_TrueSense_BGGR_WBBW_3_10 = 0x04100244,
    KvxFormat_TrueSense_GBRG_WGGW_0_10 = 0x04100245,
    KvxFormat_TrueSense_GBRG_WGGW_1_10 = 0x04100246,
    KvxFormat_TrueSense_GBRG_WGGW_2_10 = 0x04100247,
    KvxFormat_TrueSense_GBRG_WGGW_3_10 = 0x04100248,
    KvxFormat_TrueSense_GRBG_WGGW_0_10 = 0x04100249,
    KvxFormat_TrueSense_GRBG_WGGW_1_10 = 0x0410024A,
    KvxFormat_TrueSense_GRBG_WGGW_2_10 = 0x0410024B,
    KvxFormat_TrueSense_GRBG_WGGW_3_10 = 0x0410024C,
    KvxFormat_TrueSense_RGGB_WRRW_0_10 = 0x0410024D,
    KvxFormat_TrueSense_RGGB_WRRW_1_10 = 0x0410024E,
    KvxFormat_TrueSense_RGGB_WRRW_2_10 = 0x0410024F,
    KvxFormat_TrueSense_RGGB_WRRW_3_10 = 0x04100250,
    KvxFormat_TrueSense_BGGR_WBBW_0_12 = 0x04100351,
    KvxFormat_TrueSense_BGGR_WBBW_1_12 = 0x04100352,
    KvxFormat_TrueSense_BGGR_WBBW_2_12 = 0x04100353,
    KvxFormat_TrueSense_BGGR_WBBW_3_12 = 0x04100354,
    KvxFormat_TrueSense_GBRG_WGGW_0_12 = 0x04100355,
    KvxFormat_TrueSense_GBRG_WGGW_1_12 = 0x04100356,
    KvxFormat_TrueSense_GBRG_WGGW_2_12 = 0x04100357,
    KvxFormat_TrueSense_GBRG_WGGW_3_12 = 0x04100358,
    KvxFormat_TrueSense_GRBG_WGGW_0_12 = 0x04100359,
    KvxFormat_TrueSense_GRBG_WGGW_1_12 = 0x0410035A,
    KvxFormat_TrueSense_GRBG_WGGW_2_12 = 0x0410035B,
    KvxFormat_TrueSense_GRBG_WGGW_3_12 = 0x0410035C,
    KvxFormat_TrueSense_RGGB_WRRW_0_12 = 0x0410035D,
    KvxFormat_TrueSense_RGGB_WRRW_1_12 = 0x0410035E,
    KvxFormat_TrueSense_RGGB_WRRW_2_12 = 0x0410035F,
    KvxFormat_TrueSense_RGGB_WRRW_3_12 = 0x04100360,
    KvxFormat_TrueSense_BGGR_WBBW_0_14 = 0x04100461,
    KvxFormat_TrueSense_BGGR_WBBW_1_14 = 0x04100462,
    KvxFormat_TrueSense_BGGR_WBBW_2_14 = 0x04100463,
    KvxFormat_TrueSense_BGGR_WBBW_3_14 = 0x04100464,
    KvxFormat_TrueSense_GBRG_WGGW_0_14 = 0x04100465,
    KvxFormat_TrueSense_GBRG_WGGW_1_14 = 0x04100466,
    KvxFormat_TrueSense_GBRG_WGGW_2_14 = 0x04100467,
    KvxFormat_TrueSense_GBRG_WGGW_3_14 = 0x04100468,
    KvxFormat_TrueSense_GRBG_WGGW_0_14 = 0x04100469,
    KvxFormat_TrueSense_GRBG_WGGW_1_14 = 0x0410046A,
    KvxFormat_TrueSense_GRBG_WGGW_2_14 = 0x0410046B,
    KvxFormat_TrueSense_GRBG_WGGW_3_14 = 0x0410046C,
    KvxFormat_TrueSense_RGGB_WRRW_0_14 = 0x0410046D,
    KvxFormat_TrueSense_RGGB_WRRW_1_14 = 0x0410046E,
    KvxFormat_TrueSense_RGGB_WRRW_2_14 = 0x0410046F,
    KvxFormat_TrueSense_RGGB_WRRW_3_14 = 0x04100470,
    KvxFormat_RGB8 = 0x02180171,
    KvxFormat_BGR8 = 0x02180172,
    KvxFormat_RGBa8 = 0x02200173,
    KvxFormat_BGRa8 = 0x02200174,
    KvxFormat_RGB10 = 0x02300275,
    KvxFormat_BGR10 = 0x02300276,
    KvxFormat_RGB12 = 0x02300377,
    KvxFormat_BGR12 = 0x02300378,
    KvxFormat_RGB14 = 0x02300479,
    KvxFormat_BGR14 = 0x0230047A,
    KvxFormat_RGB16 = 0x0230057B,
    KvxFormat_BGR16 = 0x0230057C,
    KvxFormat_RGB_8_FLEX_Packed = 0x0218317D,
    KvxFormat_RGB_10_FLEX_Packed = 0x0220327E,
    KvxFormat_RGB_12_FLEX_Packed = 0x0224337F,
    KvxFormat_YUV422_8_UYVY = 0x05100180,
    KvxFormat_YUV422_8 = 0x05100181,
    KvxFormat_YUV422_10 = 0x05200282,
    KvxFormat_YUV422_10_PACKED = 0x05143283,
    KvxFormat_YUV444_8 = 0x05200184,
    KvxFormat_YCbCr422_8 = 0x05100185,
};

/** Number of rows of the format table. */
#define KVX_PIXEL_FORMAT_COUNT 133u

/** The position of a component letter in a pixel: GetIndexMONO() and the five functions after it. */
typedef uint32_t (*KvxGetIndex)(int16_t letter);

/** One row of the format table. Rows are constant and live as long as the library. */
typedef struct _KvxPixelFormat {
    const char* name; /**< for example "BayerRG12" */
    /**
     * Component letters, separated by blanks: a pixel's in memory order; a Bayer cell's clockwise from the top left
     * site ("R G B G2" is R G above G2 B); a TrueSense tile's row by row.
     */
    const char* components;
    uint32_t componentCount;   /**< samples per pixel: 1, 3 or 4 */
    uint16_t bitsPerComponent; /**< 8, 10, 12, 14 or 16 */
    uint16_t reserved;         /**< 0 */
    KvxGetIndex getIndex;      /**< the letter lookup for this format */
    uint32_t phase;            /**< TrueSense: 0 to 3; others: 0 */
    uint32_t pixelType;        /**< the code */
} _KvxPixelFormat;

KVX_EXTERN_C_BEGIN

/** The row at a zero-based index, or null when `index` is KVX_PIXEL_FORMAT_COUNT or more. Any thread. */
KVX_API const _KvxPixelFormat* KvxPixelFormat_ByIndex(uint32_t index) KVX_NOEXCEPT;

/** The row with the code `pixelType`, or null. Any thread. */
KVX_API const _KvxPixelFormat* KvxPixelFormat_ByCode(uint32_t pixelType) KVX_NOEXCEPT;

/** The row with this name (case-sensitive), or null when there is none or `name` is null. Any thread. */
KVX_API const _KvxPixelFormat* KvxPixelFormat_ByName(const char* name) KVX_NOEXCEPT;

/**
 * The zero-based position of a component letter in a pixel of the layout, or 0xFFFFFFFF when the layout has no such
 * component. MONO has 'Y'; RGB and BGR have 'R', 'G' and 'B'; RGBA and BGRA also 'A'; YUV has 'Y', 'U' and 'V'. Any
 * value may be passed. Any thread.
 */
KVX_API uint32_t GetIndexMONO(int16_t letter) KVX_NOEXCEPT;
KVX_API uint32_t GetIndexRGB(int16_t letter) KVX_NOEXCEPT;  /**< @copydoc GetIndexMONO */
KVX_API uint32_t GetIndexBGR(int16_t letter) KVX_NOEXCEPT;  /**< @copydoc GetIndexMONO */
KVX_API uint32_t GetIndexRGBA(int16_t letter) KVX_NOEXCEPT; /**< @copydoc GetIndexMONO */
KVX_API uint32_t GetIndexBGRA(int16_t letter) KVX_NOEXCEPT; /**< @copydoc GetIndexMONO */
KVX_API uint32_t GetIndexYUV(int16_t letter) KVX_NOEXCEPT;  /**< @copydoc GetIndexMONO */

KVX_EXTERN_C_END

static_assert(sizeof(_KvxPixelFormat) == 40 && offsetof(_KvxPixelFormat, getIndex) == 24 &&
                  offsetof(_KvxPixelFormat, pixelType) == 36,
              "the format row is part of the binary interface");

#endif
