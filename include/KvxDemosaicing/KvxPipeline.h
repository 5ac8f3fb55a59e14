/**
 * @file
 * The noise-reducing TrueSense pipeline as plain functions: Api_ImageProcess() and the stages that it runs.
 *
 * One frame of 12-bit raw samples becomes an 8-bit RGB image. Noise is filtered at half resolution: `width` and
 * `height` are those of the frame, w2 = width / 2 and h2 = height / 2 those of a half-resolution plane, N = width x
 * height and L = w2 x h2 their sizes. All planes are row-major without padding. Gamma codes are 10-bit, 0 to 1023;
 * "16.16" is a gamma code, or a difference of two, times 65536 in an int32_t.
 *
 * Nothing is allocated: the caller provides every buffer, aligned for its elements, and owns it. Stages take scratch
 * memory from their thread's arena (Alg_SetScratch()), so frames can be processed in several threads at once.
 * Messages are appended to the caller's log without a check of its size: 4096 characters hold those of any call except
 * Alg_GetRegionData(), which writes up to 14 characters per value. A null log, or a log without text, receives nothing.
 * Stages use 12-bit samples and gamma codes as table indices without a check. They skip the last row or column of a
 * frame of odd size.
 */
#ifndef KVXDEMOSAICING_KVXPIPELINE_H
#define KVXDEMOSAICING_KVXPIPELINE_H

#include <stdint.h>

#include "KvxDemosaicing/KvxApi.h"

/** Values of ImageProcessMemory::mode. */
enum ImageProcessMode {
    ImageProcessMode_Frame = 0, /**< process a frame, as any value other than the next one does */
    ImageProcessMode_Sizes = 1  /**< write the sizes that the buffers must have */
};

/** Type of a plane's elements, for functions that take a plane of any type. */
enum PlaneType {
    PlaneType_UInt8 = 0,
    PlaneType_UInt16 = 1,
    PlaneType_Int16 = 2,
    PlaneType_UInt8x3 = 3,  /**< pixels of three uint8_t */
    PlaneType_UInt16x3 = 4, /**< pixels of three uint16_t */
    PlaneType_Int32 = 5
};

/** A log in the caller's buffer. The NUL after the last message is not counted; the next message overwrites it. */
typedef struct LogText_t {
    char* text;      /**< the caller's buffer */
    uint32_t length; /**< characters so far */
} LogText_t;

static_assert(sizeof(LogText_t) == 16 && offsetof(LogText_t, length) == 8, "part of the binary interface");

/** One frame and the parameters of its processing. */
typedef struct ImageProcessParam {
    const uint16_t* input; /**< N raw samples of 12 bits */
    uint8_t* output;       /**< 3 N bytes: red, green, blue */
    char* log;             /**< the log, which each call writes from its start; may be null */
    int32_t width;         /**< even */
    int32_t height;        /**< even */
    int32_t cfaPattern;    /**< 0 "WGWR/GWRW/WBWG/BWGW", 1 "WBWG/BWGW/WGWR/GWRW", 2 "WRWG/...", 3 "WGWB/..." */
    int32_t reserved;      /**< not read */
    int32_t monoEnable;    /**< 1: grey output */
    int32_t darkFloor;     /**< black level */
    /** @{ White balance: factors of the samples behind each filter. */
    float redBalance;
    float greenBalance;
    float blueBalance;
    float panBalance;
    /** @} */
    float globalGain;           /**< applied when above 1 */
    float analogGain;           /**< the sensor's gain: selects the noise model */
    float ISOAnalogGain[5];     /**< ascending; slopes and intercepts belong to these gains */
    float ISOPanSlope[5];       /**< variance of a sample of value x: slope x + intercept, in squared 12-bit steps */
    float ISOPanIntercept[5];   /**< of pan */
    float ISOColorSlope[5];     /**< of the colours, in the same way */
    float ISOColorIntercept[5]; /**< of the colours */
    int32_t panRadius[3];       /**< of the passes over the low-resolution pan plane; below 1: no pass. With no pass
                                     over pan and colour, the noise filter of Alg_InterpolatePan() is off as well */
    float panSigma[3];          /**< thresholds in standard deviations */
    int32_t colorRadius[3];     /**< of the passes over the colour differences */
    float colorSigma[3];        /**< thresholds in standard deviations */
    float colorMatrix[9];       /**< row-major; row 0 gives red */
    float sharpness[4];         /**< sharpenParam, maxSharpen, highLumaNoise, lowLumaNoise of Alg_Sharpness() */
    const uint16_t* toneScale;  /**< 4096 values 0 to 255; null: the built-in curve, whose address is written back */
} ImageProcessParam;

static_assert(sizeof(ImageProcessParam) == 280 && offsetof(ImageProcessParam, width) == 24 &&
                  offsetof(ImageProcessParam, redBalance) == 48 && offsetof(ImageProcessParam, ISOAnalogGain) == 72 &&
                  offsetof(ImageProcessParam, panRadius) == 172 && offsetof(ImageProcessParam, colorSigma) == 208 &&
                  offsetof(ImageProcessParam, colorMatrix) == 220 && offsetof(ImageProcessParam, sharpness) == 256 &&
                  offsetof(ImageProcessParam, toneScale) == 272,
              "part of the binary interface");

/** The mode of a call, and the working buffers with their sizes in bytes. */
typedef struct ImageProcessMemory {
    int32_t mode;         /**< ImageProcessMode */
    void* work;           /**< raw samples and quarter planes, later the low-pass pan plane */
    uint32_t workSize;    /**< 2 N + 12 L */
    void* staging;        /**< the result until it is complete, and the low-resolution colour differences */
    uint32_t stagingSize; /**< 3 N + 4 L */
    void* lowPan;         /**< low-resolution pan */
    uint32_t lowPanSize;  /**< 4 L */
    void* full0;          /**< colour differences, or scratch */
    uint32_t full0Size;   /**< 4 N */
    void* full1;          /**< as full0 */
    uint32_t full1Size;   /**< 4 N */
    void* full2;          /**< as full0 */
    uint32_t full2Size;   /**< 4 N */
    void* pan;            /**< full-resolution pan */
    uint32_t panSize;     /**< 2 N */
} ImageProcessMemory;

static_assert(sizeof(ImageProcessMemory) == 120 && offsetof(ImageProcessMemory, work) == 8 &&
                  offsetof(ImageProcessMemory, workSize) == 16 && offsetof(ImageProcessMemory, pan) == 104 &&
                  offsetof(ImageProcessMemory, panSize) == 112,
              "part of the binary interface");

KVX_EXTERN_C_BEGIN

/**
 * Processes a frame, or writes the buffer sizes that a frame needs into `memory`. No state is kept between calls.
 *
 * @return with ImageProcessMode_Sizes the sum of the sizes, 19 N + 20 L; otherwise 0, or -1 when a stage failed: the
 *         log then has the reason, and `output` is unchanged. -1 without a message: a null `param`, `memory` or buffer.
 *         -1 with "image size error.\n": an odd size, or one whose sum of sizes does not fit into 31 bits.
 *         A width or height below 1 processes nothing and gives 0: the log is then empty and `output` unchanged.
 */
KVX_API int32_t Api_ImageProcess(ImageProcessParam* param, ImageProcessMemory* memory) KVX_NOEXCEPT;

/**
 * Sets the scratch memory of the stages that this thread calls. Api_ImageProcess() does so before every stage.
 *
 * @param begin first byte
 * @param end one past the last
 * @param buffer1,buffer2 further buffers that some stages need; may be null for the others
 */
KVX_API void Alg_SetScratch(void* begin, void* end, void* buffer1, void* buffer2) KVX_NOEXCEPT;

/** The noise model at a gain: linear between the breakpoints, constant outside them. @return 0 */
KVX_API int32_t Alg_CalculateNoiseParameter(float gain, const float gains[5], const float slopes[5],
                                            const float intercepts[5], float* slope, float* intercept,
                                            LogText_t* log) KVX_NOEXCEPT;

/**
 * A checksum: for every byte it is rotated left by 5 bits and then combined with the byte by exclusive or.
 *
 * @param data `rows` rows of `rowBytes` bytes, one after the other
 * @param seed the checksum before the first byte; with fewer than one row it is the result
 */
KVX_API uint32_t calcHash(const void* data, int32_t rowBytes, int32_t rows, uint32_t seed) KVX_NOEXCEPT;

/**
 * Writes a part of a plane to the log, for diagnosis.
 *
 * @param dataType PlaneType
 * @return 0; -1 "region position error.\n": the part is not smaller than the plane or not inside it; "data type
 *         error.\n"
 */
KVX_API int32_t Alg_GetRegionData(const char* name, const void* data, int32_t dataType, int32_t x, int32_t y,
                                  int32_t columns, int32_t rows, int32_t planeWidth, int32_t planeHeight,
                                  LogText_t* log) KVX_NOEXCEPT;

/** output = raw - darkFloor, clamped to 0..4095. @return 0 */
KVX_API int32_t Alg_SubtractDarkFloor(const uint8_t* raw, int32_t width, int32_t height, int32_t darkFloor,
                                      uint16_t* output, LogText_t* log) KVX_NOEXCEPT;

/** Multiplies samples in place, at 1/1024 of a step, clamped to 0..4095. @return 0 */
KVX_API int32_t ApplyGlobalGain(int16_t* samples, int32_t count, float gain) KVX_NOEXCEPT;

/**
 * White balance. Splits the mosaic into quarter planes of L samples: pan of the even rows, pan of the odd rows, colour
 * of the even rows, colour of the odd rows.
 *
 * @return 0; -1 "CFA pattern error.\n", "CFA color error.\n"
 */
KVX_API int32_t Alg_WhiteBalance(const uint16_t* raw, int32_t width, int32_t height, int32_t cfaPattern,
                                 float redBalance, float greenBalance, float blueBalance, float panBalance,
                                 uint16_t* pan0, uint16_t* pan1, uint16_t* colour0, uint16_t* colour1,
                                 LogText_t* log) KVX_NOEXCEPT;

/**
 * Pan at every site, from the quarter planes of pan: noise is measured and filtered, then the colour sites are
 * interpolated along edges. Api_ImageProcess() leaves the filter out when all its radii are below 1.
 *
 * @param pan N gamma codes
 * @param panAt0,panAt1 L linear values each: pan at the colour sites of the even and of the odd rows
 * @return 0; -1 "... memory alloc error.\n". Scratch: 2 N bytes
 */
KVX_API int32_t Alg_InterpolatePan(const uint16_t* pan0, const uint16_t* pan1, int32_t width, int32_t height,
                                   uint16_t* pan, uint16_t* panAt0, uint16_t* panAt1, LogText_t* log) KVX_NOEXCEPT;

/**
 * The low-resolution planes.
 *
 * @param lowPan L values 16.16, the mean pan of each 2x2 cell
 * @param lowColour L gamma codes, the colour of each cell
 * @param lowColorDiff L values 16.16, colour minus pan, outliers removed
 * @return 0; -1 "... memory alloc error.\n". Scratch: 4 L bytes
 */
KVX_API int32_t Alg_GenerateLow(const uint16_t* pan, const uint16_t* panAt0, const uint16_t* panAt1,
                                const uint16_t* colour0, const uint16_t* colour1, int32_t width, int32_t height,
                                int32_t* lowPan, uint16_t* lowColour, int32_t* lowColorDiff,
                                LogText_t* log) KVX_NOEXCEPT;

/**
 * Clamps every value to the range of its neighbours `step` rows and columns away, in place.
 *
 * @param dataType PlaneType_Int32; anything else is a "data type error.\n"
 * @return 0 or -1. Scratch: a copy of the plane
 */
KVX_API int32_t Alg_ImpulseFilter(int32_t* plane, int32_t dataType, int32_t width, int32_t height, int32_t step,
                                  LogText_t* log) KVX_NOEXCEPT;

/**
 * Filters noise from the low-resolution colour differences, separately for each of the four phases of their mosaic.
 *
 * @param lowColour L gamma codes: the brightness of each cell
 * @param gains,slopes,intercepts the noise model, as for Alg_CalculateNoiseParameter() at `analogGain`
 * @param sigma0,sigma1,sigma2 thresholds of the three passes, in standard deviations
 * @param radius0,radius1,radius2 of the three passes; a radius below 1 skips its pass
 * @return 0 or -1. Scratch: 14 bytes for each cell of the mosaic, ceil(w2 / 2) x ceil(h2 / 2)
 */
KVX_API int32_t Alg_LowColorDiffClean(const uint16_t* lowColour, int32_t* lowColorDiff, int32_t w2, int32_t h2,
                                      float globalGain, float redBalance, float greenBalance, float blueBalance,
                                      float analogGain, const float gains[5], const float slopes[5],
                                      const float intercepts[5], float sigma0, float sigma1, float sigma2,
                                      int32_t radius0, int32_t radius1, int32_t radius2, LogText_t* log) KVX_NOEXCEPT;

/** Filters noise from the low-resolution pan plane; arguments as above. @return 0 or -1. Scratch: 8 L bytes */
KVX_API int32_t Alg_LowPanClean(int32_t* lowPan, int32_t w2, int32_t h2, float globalGain, float analogGain,
                                const float gains[5], const float slopes[5], const float intercepts[5], float sigma0,
                                float sigma1, float sigma2, int32_t radius0, int32_t radius1, int32_t radius2,
                                LogText_t* log) KVX_NOEXCEPT;

/**
 * Thresholds of a pass over a pan plane: `sigma` standard deviations of the noise at the local mean.
 *
 * @param plane 16.16
 * @param thresholds 16.16, one for each value of the plane
 * @return 0
 */
KVX_API int32_t Alg_PanBuildGammaNoiseThreshold(const int32_t* plane, int32_t width, int32_t height, float sigma,
                                                float globalGain, float slope, float intercept, int32_t* thresholds,
                                                LogText_t* log) KVX_NOEXCEPT;

/** The same for a plane of colour differences, whose colours are given as gamma codes. @return 0 */
KVX_API int32_t Alg_ColorBuildGammaNoiseThreshold(const uint16_t* colour, int32_t width, int32_t height, float sigma,
                                                  float gain, float slope, float intercept, int32_t* thresholds,
                                                  LogText_t* log) KVX_NOEXCEPT;

/**
 * One pass of the sigma filter: every value becomes the mean of the values in its window that differ from it by no more
 * than its threshold. A value that differs from all others by more is clamped to the range of its four nearest ones.
 * (Lee, "Digital image smoothing and the sigma filter", CVGIP 1983.)
 *
 * @param plane receives the result
 * @param copy the input; also receives the result, for the next pass
 * @param radius of the square window; more than 16 counts as 16; below 1 nothing is written
 * @param thresholds not negative; 0 leaves a value unchanged
 * @return 0
 */
KVX_API int32_t Alg_IterativeSigmaFilter(int32_t* plane, int32_t* copy, int32_t width, int32_t height, int32_t radius,
                                         const int32_t* thresholds, LogText_t* log) KVX_NOEXCEPT;

/**
 * The colour differences at full resolution.
 *
 * @param cfaPattern as in ImageProcessParam
 * @param red,green,blue 4 L values 16.16 each
 * @return 0; -1 "CFA pattern error.\n", "CFA color error.\n", "pBuf memory alloc error.\n", and the same of
 *         "g_dynamicBuffer1". Scratch: 16 L bytes, and 12 L bytes of buffer 1
 */
KVX_API int32_t Alg_LowColorDiffUpSample(const int32_t* lowColorDiff, int32_t w2, int32_t h2, int32_t cfaPattern,
                                         int32_t* red, int32_t* green, int32_t* blue, LogText_t* log) KVX_NOEXCEPT;

/** The low-pass pan plane at full resolution, 4 L values. @return 0 or -1. Scratch: 16 L bytes */
KVX_API int32_t Alg_LowPanUpSample(const int32_t* lowPan, int32_t w2, int32_t h2, int32_t* out,
                                   LogText_t* log) KVX_NOEXCEPT;

/**
 * Convolves a plane in place along its rows (direction 0) or columns (1); another direction changes nothing. Values
 * whose window extends beyond the plane are unchanged.
 *
 * @param kernel `taps` coefficients, an odd number
 * @return 0; -1 "pBuf memory alloc error.\n"; -1 without a message when `taps` is even or below 1. Scratch: a copy of
 *         the plane
 */
KVX_API int32_t Alg_Convolve1D(int32_t* plane, int32_t width, int32_t height, const float* kernel, int32_t taps,
                               int32_t direction, LogText_t* log) KVX_NOEXCEPT;

/** The same in both directions at once for 16-bit values; sums are stored modulo 65536. @return 0 or -1 */
KVX_API int32_t Alg_Convolve2D(uint16_t* plane, int32_t width, int32_t height, const float* kernel, int32_t columns,
                               int32_t rows, LogText_t* log) KVX_NOEXCEPT;

/**
 * Makes an RGB image of low-pass pan and colour differences: linear light, matrix, tone scale.
 *
 * @param rr,rg,rb,gr,gg,gb,br,bg,bb the colour matrix: red becomes rr red + rg green + rb blue, and so on
 * @param rgb 3 N bytes
 * @param toneScale 4096 values, of which the low bytes are used
 * @return 0
 */
KVX_API int32_t Alg_ColorCorrection(const int32_t* red, const int32_t* green, const int32_t* blue,
                                    const int32_t* lowPan, int32_t width, int32_t height, float rr, float rg, float rb,
                                    float gr, float gg, float gb, float br, float bg, float bb, uint8_t* rgb,
                                    const uint16_t* toneScale, LogText_t* log) KVX_NOEXCEPT;

/**
 * Adds the detail of the pan plane to an RGB image and sharpens it.
 *
 * @param rgb 3 N bytes, in place
 * @param pan N gamma codes; receives display values
 * @param lowPan N values 16.16; receives display values
 * @param sharpenParam activity below this, times a falling function of brightness, is not sharpened
 * @param maxSharpen largest amount of sharpening
 * @param highLumaNoise share of the detail that is added in the brightest areas
 * @param lowLumaNoise share of the detail that is added in the darkest areas
 * @return 0; -1 "pBuf memory alloc error.\n", and the same of "g_dynamicBuffer1" when a buffer is null. Scratch: 4 N
 *         bytes, and as much of both buffers
 */
KVX_API int32_t Alg_Sharpness(uint8_t* rgb, uint16_t* pan, int32_t* lowPan, int32_t width, int32_t height,
                              float sharpenParam, float maxSharpen, float highLumaNoise, float lowLumaNoise,
                              const uint16_t* toneScale, LogText_t* log) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
