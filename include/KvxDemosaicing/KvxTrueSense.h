/**
 * @file
 * The TrueSense component converts raw frames with a 4x4 mosaic, half of whose sites are panchromatic (W), into images.
 *
 * Order of calls: KvxTrueSense_CreateComponent(), parameters through KvxTrueSense_GetComponent(), optionally
 * KvxTrueSense_AllocData(), KvxTrueSense_ConvertImage() once per frame, KvxTrueSense_DeleteComponent().
 *
 * The component has 66 parameters: "TrueSenseAlgType" (integer, 0 to 6, default 0, one of KvxTrueSenseAlgorithm),
 * "NoRealloc" (no effect; exists for callers that set it), and the 64 named fields of tagTrueSenseParam.
 *
 * Threads: a component is used by one thread at a time; different components are independent. A conversion spreads its
 * work over "threads_num" threads, or as many as OpenMP is set to, and does not change that setting; algorithm 4 takes
 * one. The picture is the same for any number of threads. After the first frame of a geometry, a conversion allocates
 * nothing. Image buffers belong to the caller.
 *
 * Depths: algorithm 0 takes samples of 8, 10, 12, 14 and 16 bits, the others all of 8 to 16; odd depths are written 16
 * bits deep. All compute with 12 bits, and 1, 3 and 4 keep 10-bit gamma codes of pan: 16-bit samples of 1 and 3 carry
 * what these tell apart, those of 4 a byte, made deeper.
 */
#ifndef KVXDEMOSAICING_KVXTRUESENSE_H
#define KVXDEMOSAICING_KVXTRUESENSE_H

#include "KvxDemosaicing/KvxComponent.h"
#include "KvxDemosaicing/KvxImage.h"

/** Values of "TrueSenseAlgType" and of the `algType` argument of the flat functions. */
enum KvxTrueSenseAlgorithm {
    KvxTrueSenseAlgorithm_Fast = 0,      /**< interpolation only */
    KvxTrueSenseAlgorithm_Simple = 1,    /**< light noise reduction */
    KvxTrueSenseAlgorithm_BayerLike = 2, /**< reduction to a Bayer mosaic of half the size */
    KvxTrueSenseAlgorithm_KodakLike = 3, /**< the noise-reducing pipeline in vectors and threads */
    KvxTrueSenseAlgorithm_Kodak = 4      /**< the noise-reducing pipeline, Api_ImageProcess(), in one thread */
};

/** Number of entries of a tone table. */
#define KVX_TONE_TABLE_SIZE 4096u

/**
 * The parameters of a TrueSense conversion. All fields but the last have the names of the component's parameters, whose
 * descriptions (KvxComponent_GetParamByIdx(), or the command `kvx-demosaic params truesense`) give ranges and defaults.
 * The values of a record are not checked. TrueSense_DefaultValues() sets the defaults of the flat functions. Flags are
 * 0 or 1.
 *
 * Of what is marked as noise-reducing (algorithms 1, 3 and 4), algorithm 4 takes no impulseFilterEnable: it always
 * filters; and algorithm 1 has no noise model and no sharpening: it takes monoEnable, impulseFilterEnable, darkFloor,
 * the factors of the white balance and globalGain. If all pan and colour radii are 0, none of them filters noise.
 */
typedef struct tagTrueSenseParam {
    int64_t threads_num;         /**< threads of a conversion; 0: as OpenMP is set */
    int64_t normalizationEnable; /**< flag: 16-bit samples are written 16 bits deep, whatever the source's depth */
    int64_t horMirrored;         /**< flag: the sensor was read out from right to left; the format then gives the phase
                                      of the last column, which was read first */
    int64_t verMirrored;         /**< flag: the sensor was read out from bottom to top; the format then gives the phase
                                      of the last row */
    int64_t monoEnable;          /**< 1: grey. Noise-reducing algorithms only, as all fields to the colour matrix */
    int64_t impulseFilterEnable; /**< flag: outliers among the colour differences are clamped */
    int64_t sharpnessEnable;     /**< flag: edges are sharpened; with 0, maxSharpen counts as 0, and detail stays */
    int64_t darkFloor;           /**< black level at 12 bits */
    /** @{ White balance: factors of the samples of each colour. */
    double redGain;
    double greenGain;
    double blueGain;
    double panGain;
    /** @} */
    double globalGain; /**< factor of all samples; applied when above 1 */
    double analogGain; /**< the sensor's gain: selects the noise model */
    /** @{ Noise model: five ascending gains, at each of which the variance of a sample x is slope x + intercept. */
    double ISOAnalogGain_0;
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
    /** @} */
    /** @{ Radii and sigmas of the three filter passes over pan and over the colours; radius 0 skips a pass. */
    int64_t panRadius0;
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
    /** @} */
    /** @{ Colour matrix: first letter the output, second the input. The identity is skipped. */
    double RR;
    double RG;
    double RB;
    double GR;
    double GG;
    double GB;
    double BR;
    double BG;
    double BB;
    /** @} */
    double sharpenParam;  /**< noise-reducing, as all from here on but the tone table: activity below this, times a
                               falling function of brightness, is not sharpened */
    double maxSharpen;    /**< largest amount of sharpening */
    double highLumaNoise; /**< share of the detail that is added in the brightest places */
    double lowLumaNoise;  /**< share of the detail that is added in the darkest places */
    /** KVX_TONE_TABLE_SIZE output values, 0 to 4095, by 12-bit input; owned by the caller. Null: built-in curve. */
    const uint16_t* toneTable;
} tagTrueSenseParam;

static_assert(sizeof(tagTrueSenseParam) == 520 && offsetof(tagTrueSenseParam, redGain) == 64 &&
                  offsetof(tagTrueSenseParam, panRadius0) == 312 && offsetof(tagTrueSenseParam, RR) == 408 &&
                  offsetof(tagTrueSenseParam, toneTable) == 512,
              "the parameter record is part of the binary interface");

#ifdef __cplusplus
/** The converter. The order of the virtual functions is part of the binary interface. */
class KVX_API KvxTrueSense {
public:
    /** Same as KvxTrueSense_CreateComponent(). */
    static KvxTrueSense* CreateComponent() noexcept;
    /** Same as KvxTrueSense_DeleteComponent(). */
    static void DeleteComponent(KvxTrueSense* component) noexcept;

    /** The parameter interface, which lives as long as this object. */
    virtual KvxComponent* GetComponent() noexcept = 0;
    /** Same as KvxTrueSense_ConvertImage(). */
    virtual uint32_t ConvertImage(const _KvxImage* src, _KvxImage* dst) noexcept = 0;
    /** Same as KvxTrueSense_AllocData(). */
    virtual uint32_t AllocData(const _KvxImage* src, _KvxImage* dst) noexcept = 0;
    /** Same as KvxTrueSense_ReleaseData(). */
    virtual void ReleaseData() noexcept = 0;

protected:
    ~KvxTrueSense() = default;
};
#else
typedef struct KvxTrueSense KvxTrueSense;
#endif

KVX_EXTERN_C_BEGIN

/** A new component with default parameters; null when out of memory. Delete it by KvxTrueSense_DeleteComponent(). */
KVX_API KvxTrueSense* KvxTrueSense_CreateComponent(void) KVX_NOEXCEPT;

/** The parameter interface of a component, which owns it. Null for null. */
KVX_API KvxComponent* KvxTrueSense_GetComponent(KvxTrueSense* component) KVX_NOEXCEPT;

/**
 * Optional: releases what the component keeps from earlier frames and prepares it for the source's format and the
 * current algorithm. Reads only the two formats and writes nothing.
 *
 * @return 0; 0x80060007 null argument, source not TrueSense, algorithm not available; 0x80060009 out of memory
 */
KVX_API uint32_t KvxTrueSense_AllocData(KvxTrueSense* component, const _KvxImage* src, _KvxImage* dst) KVX_NOEXCEPT;

/**
 * Converts one frame with the algorithm that "TrueSenseAlgType" selects.
 *
 * Destinations: "RGB8", "BGR8", "RGBa8" or "BGRa8"; for sources of 10 to 14 bits also "RGB10" to "RGB16" and "BGR10" to
 * "BGR16". 16-bit samples have the source's depth whatever the format's name says; with "normalizationEnable" they are
 * 16 bits deep.
 *
 * @param component from KvxTrueSense_CreateComponent(); used by one thread at a time
 * @param src one of the 64 TrueSense formats, `height` rows of `lineStep` bytes; a sample is one byte or one
 *            right-aligned 16-bit word. `pixelDepth` is the number of significant bits.
 * @param dst the caller sets `pixelType`, `lineStep` and `data`; the buffer has `src->height` rows of `lineStep` bytes,
 *            and the caller owns it. Its `width` and `height` are not read. Only pixels are written, neither the row
 *            padding nor the fourth byte of a four-channel pixel. The buffers may overlap: the source is then copied
 *            first, which costs time and memory.
 * @return 0; 0x80060007 null argument, source not TrueSense, algorithm not available, destination or depth not
 *         supported, a line step that does not hold a row or is above INT_MAX; 0x80060008 null `data`; 0x80060009 out
 *         of memory, or a frame without pixels; with algorithm 4 also a frame of more than about 89 megapixels. A call
 *         that fails leaves the destination unchanged.
 */
KVX_API uint32_t KvxTrueSense_ConvertImage(KvxTrueSense* component, const _KvxImage* src, _KvxImage* dst) KVX_NOEXCEPT;

/**
 * The component's parameters as a record, for instance to change some of them for KvxTrueSense_ConvertImageWith().
 *
 * @param params receives the record; its tone table is null, the built-in curve
 * @return 0; 0x80060007 null argument, which leaves the record as it was
 */
KVX_API uint32_t KvxTrueSense_GetParams(const KvxTrueSense* component, tagTrueSenseParam* params) KVX_NOEXCEPT;

/**
 * Converts one frame with a record of parameters and an algorithm of its own: for callers that choose both for each
 * frame. The component's parameters are neither read nor changed; what it keeps from frame to frame is used as by
 * KvxTrueSense_ConvertImage().
 *
 * @param component,src,dst as of KvxTrueSense_ConvertImage()
 * @param params read here only, with its tone table; TrueSense_DefaultValues() fills a record. `normalizationEnable`
 *               does not count for 8-bit sources.
 * @param algorithm KvxTrueSenseAlgorithm
 * @return as KvxTrueSense_ConvertImage(); 0x80060007 also for null parameters
 */
KVX_API uint32_t KvxTrueSense_ConvertImageWith(KvxTrueSense* component, const _KvxImage* src, _KvxImage* dst,
                                               const tagTrueSenseParam* params, int64_t algorithm) KVX_NOEXCEPT;

/** Releases what the component keeps between frames. The parameters keep their values. Null is ignored. */
KVX_API void KvxTrueSense_ReleaseData(KvxTrueSense* component) KVX_NOEXCEPT;

/** Deletes a component and its parameter interface. Null is ignored. */
KVX_API void KvxTrueSense_DeleteComponent(KvxTrueSense* component) KVX_NOEXCEPT;

/**
 * The position of a TrueSense frame's first pixel in the base tile.
 *
 * @param pixelType any pixel-type code
 * @return 4 x row + column, 0 to 15, in the tile "W B W G / B W G W / W G W R / G W R W"; -1 for every other format.
 *         Any thread.
 */
KVX_API int PixelTypeToTruesenseGrid(unsigned long pixelType) KVX_NOEXCEPT;

/**
 * Fills a record with the defaults of the flat functions, which differ from those of a component.
 *
 * @param params must not be null; its content is overwritten
 * @return 0
 */
KVX_API uint32_t TrueSense_DefaultValues(tagTrueSenseParam* params) KVX_NOEXCEPT;

/** The built-in tone curve: KVX_TONE_TABLE_SIZE values, 0 to 4095, by 12-bit input. Never null; valid for ever. */
KVX_API const uint16_t* TrueSense_DefaultToneTable(void) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
