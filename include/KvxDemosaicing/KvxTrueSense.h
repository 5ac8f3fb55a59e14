/**
 * @file
 * TrueSense frames: raw frames of 4x4 mosaics in which half of the sites are panchromatic (W).
 */
#ifndef KVXDEMOSAICING_KVXTRUESENSE_H
#define KVXDEMOSAICING_KVXTRUESENSE_H

#include "KvxDemosaicing/KvxImage.h"
#include "KvxDemosaicing/KvxResult.h"

/** Number of entries of a tone table. */
#define KVX_TONE_TABLE_SIZE 4096u

/**
 * All tuning of a TrueSense conversion. The fields but the last bear the names of the component's parameters; ranges
 * are those of the parameters. Flags are 0 or 1.
 */
typedef struct tagTrueSenseParam {
    int64_t threads_num;         /**< threads of a conversion; 0: as OpenMP is set */
    int64_t normalizationEnable; /**< flag: samples are written 16 bits deep, whatever the source's depth */
    int64_t horMirrored;         /**< flag: the sensor was read out from right to left */
    int64_t verMirrored;         /**< flag: the sensor was read out from bottom to top */
    int64_t monoEnable;          /**< flag, and from here to the colour matrix: the noise-reducing algorithms only */
    int64_t impulseFilterEnable; /**< flag */
    int64_t sharpnessEnable;     /**< flag */
    int64_t darkFloor;           /**< black level at 12 bits */
    double redGain;
    double greenGain;
    double blueGain;
    double panGain;
    double globalGain;
    double analogGain;
    double
        ISOAnalogGain_0; /**< noise model: five ascending gains, with slope and intercept of pan and colour at each */
    double ISOAnalogGain_1;
    double ISOAnalogGain_2;
    double ISOAnalogGain_3;
    double ISOAnalogGain_4;
    double ISOPanSlope_0;
    double ISOPanSlope_1;
    double ISOPanSlope_2;
    double ISOPanSlope_3;
    double ISOPanSlope_4;
    double ISOPanIntercept_0;
    double ISOPanIntercept_1;
    double ISOPanIntercept_2;
    double ISOPanIntercept_3;
    double ISOPanIntercept_4;
    double ISOColorSlope_0;
    double ISOColorSlope_1;
    double ISOColorSlope_2;
    double ISOColorSlope_3;
    double ISOColorSlope_4;
    double ISOColorIntercept_0;
    double ISOColorIntercept_1;
    double ISOColorIntercept_2;
    double ISOColorIntercept_3;
    double ISOColorIntercept_4;
    int64_t panRadius0; /**< radii and sigmas of the three filter passes; radius 0 skips a pass */
    int64_t panRadius1;
    int64_t panRadius2;
    double panSigma0;
    double panSigma1;
    double panSigma2;
    int64_t colorRadius0;
    int64_t colorRadius1;
    int64_t colorRadius2;
    double colorSigma0;
    double colorSigma1;
    double colorSigma2;
    double RR; /**< colour matrix: first letter the output, second the input; exactly the identity is not applied */
    double RG;
    double RB;
    double GR;
    double GG;
    double GB;
    double BR;
    double BG;
    double BB;
    double sharpenParam;
    double maxSharpen;
    double highLumaNoise;
    double lowLumaNoise;
    /** KVX_TONE_TABLE_SIZE output values of 12 bits, by 12-bit input; the caller's. Null: the built-in curve. */
    const uint16_t* toneTable;
} tagTrueSenseParam;

static_assert(sizeof(tagTrueSenseParam) == 65 * 8 && offsetof(tagTrueSenseParam, redGain) == 64 &&
                  offsetof(tagTrueSenseParam, panRadius0) == 39 * 8 && offsetof(tagTrueSenseParam, RR) == 51 * 8 &&
                  offsetof(tagTrueSenseParam, toneTable) == 64 * 8,
              "the parameter record is part of the binary interface");

KVX_EXTERN_C_BEGIN

/**
 * The place of a TrueSense frame's first pixel in the base tile.
 *
 * @param pixelType any pixel-type code
 * @return 4 x row + column, 0 to 15, in the tile "W B W G / B W G W / W G W R / G W R W"; -1 for every other format.
 *         Any thread.
 */
KVX_API int PixelTypeToTruesenseGrid(uint32_t pixelType) KVX_NOEXCEPT;

/**
 * Fills a record with the defaults of the flat functions, which differ from those of a component.
 *
 * @param params any content; must not be null
 * @return 0
 */
KVX_API uint32_t TrueSense_DefaultValues(tagTrueSenseParam* params) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
