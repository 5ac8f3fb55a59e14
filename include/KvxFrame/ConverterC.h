/**
 * @file
 * Conversion of frames to pictures in C. Converter.h, Finish.h and CameraProfile.h explain the settings.
 *
 * Order of calls: KvxFrameConverter_Create() for a family of frames, settings, KvxFrameConverter_Convert() once per
 * frame, KvxFrameConverter_Delete(). A converter is used by one thread at a time; converters share no state.
 *
 * The finish is the processing of the values: KvxFrameConverter_SetLook() begins one, and the functions after it change
 * its parts. The first of them makes a linear one if there is none. What they set also holds against a camera profile.
 */
#ifndef KVXFRAME_CONVERTERC_H
#define KVXFRAME_CONVERTERC_H

#include "KvxDemosaicing/KvxComponent.h"
#include "KvxFrame/ViewC.h"

/** A converter, made by KvxFrameConverter_Create(). */
typedef struct KvxFrameConverter KvxFrameConverter;

/** What a finish starts with. */
enum KvxFrameLook {
    KvxFrameLook_None = 0,   /**< no finish, the default: TrueSense frames get the component's matrix and tone curve */
    KvxFrameLook_Linear = 1, /**< linear values, from black 0 to white */
    KvxFrameLook_Natural = 2 /**< for display: measured white balance and exposure, sRGB curve */
};

/** Where the white-balance gains come from, kvx::frame::WhiteBalance. */
enum KvxFrameWhiteBalance {
    KvxFrameWhiteBalance_Given = 0,
    KvxFrameWhiteBalance_GreyWorld = 1,
    KvxFrameWhiteBalance_WhitePatch = 2,
    KvxFrameWhiteBalance_Auto = 3
};

/** Tone curve. */
enum KvxFrameTone { KvxFrameTone_Linear = 0, KvxFrameTone_Srgb = 1 };

/** Which samples are replaced as defective, kvx::frame::Defects. */
enum KvxFrameDefects { KvxFrameDefects_Listed = 0, KvxFrameDefects_Auto = 1 };

KVX_EXTERN_C_BEGIN

/**
 * The name of an algorithm of a family, in the order of kvx::frame::AlgorithmsOf(): the default first.
 *
 * @return a constant text; null after the last, and for families without algorithms
 */
KVX_API const char* KvxFrame_AlgorithmName(uint32_t family, uint32_t index) KVX_NOEXCEPT;

/**
 * A new converter for frames of a family.
 *
 * @param family    KvxFrameFamily, not Colour
 * @param converter receives the converter, to be deleted by KvxFrameConverter_Delete(); null if the call fails
 */
KVX_API uint32_t KvxFrameConverter_Create(uint32_t family, KvxFrameConverter** converter) KVX_NOEXCEPT;
/** Frees a converter and its memory. Null is ignored. */
KVX_API void KvxFrameConverter_Delete(KvxFrameConverter* converter) KVX_NOEXCEPT;

/**
 * The sentence of the last call with this converter that failed.
 * @return never null; "" before the first failure. Valid until the next failure; at most 1023 bytes.
 */
KVX_API const char* KvxFrameConverter_LastError(const KvxFrameConverter* converter) KVX_NOEXCEPT;

/** Selects an algorithm by name or number. @return 0; 0x80070002 unknown: the sentence lists the known ones */
KVX_API uint32_t KvxFrameConverter_SetAlgorithm(KvxFrameConverter* converter, const char* nameOrNumber) KVX_NOEXCEPT;
/** The name of the selected algorithm, or its number if it has no name; "" for mono. */
KVX_API uint32_t KvxFrameConverter_GetAlgorithm(KvxFrameConverter* converter, char* buffer,
                                                uint32_t* size) KVX_NOEXCEPT;

/**
 * Sets a parameter of the component by name, from text as for KvxComponent_SetParamAsString().
 * @return 0; 0x80000002 unknown: the sentence suggests similar names; the component's other results; 0x80070002 for
 * mono
 */
KVX_API uint32_t KvxFrameConverter_SetParameter(KvxFrameConverter* converter, const char* name,
                                                const char* value) KVX_NOEXCEPT;
/** The value of a parameter as text. */
KVX_API uint32_t KvxFrameConverter_GetParameter(KvxFrameConverter* converter, const char* name, char* buffer,
                                                uint32_t* size) KVX_NOEXCEPT;
/** The description of the parameter at an index, from 0. @return 0; 0x80070002 after the last, and for mono */
KVX_API uint32_t KvxFrameConverter_ParameterAt(KvxFrameConverter* converter, uint32_t index,
                                               _KvxStParam* parameter) KVX_NOEXCEPT;

/** Threads of a conversion, at most: 1 to 1024; 0, the default: OpenMP's setting. @return 0; 0x80070004 another count
 */
KVX_API uint32_t KvxFrameConverter_SetThreads(KvxFrameConverter* converter, int count) KVX_NOEXCEPT;

/** The analog gain of the frames, whose noise "fine" then removes. @return 0; 0x80070004 a negative gain or NaN */
KVX_API uint32_t KvxFrameConverter_SetAnalogGain(KvxFrameConverter* converter, double gain) KVX_NOEXCEPT;
/**
 * The noise of the frames instead, in units of NoiseLine (KvxFrame/SensorNoise.h).
 * @param pan,colour slope and intercept of clear (and mono) and of colour sites; both null: no noise
 */
KVX_API uint32_t KvxFrameConverter_SetNoise(KvxFrameConverter* converter, const double pan[2],
                                            const double colour[2]) KVX_NOEXCEPT;

/**
 * The profile of the camera (`kvx-demosaic calibrate`), which corrects fixed pattern, shading and defective pixels, and
 * gives levels, gains and matrix where no function sets them.
 *
 * @param path a file; null: no profile
 * @param column,row place of the frames in the profile's frames, if they are regions of them; else 0
 * @return 0; 0x80070007 a file that cannot be read or is no profile; 0x80070004 a value in it that is out of range
 */
KVX_API uint32_t KvxFrameConverter_SetCamera(KvxFrameConverter* converter, const char* path, uint32_t column,
                                             uint32_t row) KVX_NOEXCEPT;
/** Sentences about the file, such as unknown keys, from index 0; null after the last. Valid until the next profile. */
KVX_API const char* KvxFrameConverter_CameraWarning(const KvxFrameConverter* converter, uint32_t index) KVX_NOEXCEPT;
/** Which samples are replaced: KvxFrameDefects. */
KVX_API uint32_t KvxFrameConverter_SetDefects(KvxFrameConverter* converter, uint32_t defects) KVX_NOEXCEPT;

/** Replaces the whole finish by one of KvxFrameLook. */
KVX_API uint32_t KvxFrameConverter_SetLook(KvxFrameConverter* converter, uint32_t look) KVX_NOEXCEPT;
/**
 * @{
 * Black and white level: sample values, fractions allowed, of red, green in red rows, green in blue rows, blue (Bayer)
 * or red, green, blue, clear (TrueSense; mono frames take the last). A white level of 0 is the largest sample.
 * @return 0; 0x80070004 out of range. Levels that do not fit a frame are refused with it
 */
KVX_API uint32_t KvxFrameConverter_SetBlackLevel(KvxFrameConverter* converter, const double levels[4]) KVX_NOEXCEPT;
KVX_API uint32_t KvxFrameConverter_SetWhiteLevel(KvxFrameConverter* converter, const double levels[4]) KVX_NOEXCEPT;
/** @} */
/** Where the gains come from: KvxFrameWhiteBalance. Measured gains are multiplied by those of SetGains(). */
KVX_API uint32_t KvxFrameConverter_SetWhiteBalance(KvxFrameConverter* converter, uint32_t method) KVX_NOEXCEPT;
/** Gains of red, green, blue and clear sites: more than 0, at most 64. Measures none, see SetWhiteBalance(). */
KVX_API uint32_t KvxFrameConverter_SetGains(KvxFrameConverter* converter, const double gains[4]) KVX_NOEXCEPT;
/** Brightening in EV, -16 to 16. @param adds whether the exposure that is measured in the frame is added */
KVX_API uint32_t KvxFrameConverter_SetExposure(KvxFrameConverter* converter, double exposure, bool adds) KVX_NOEXCEPT;
/** Colour matrix, row by row; -64 to 64. */
KVX_API uint32_t KvxFrameConverter_SetMatrix(KvxFrameConverter* converter, const double matrix[9]) KVX_NOEXCEPT;
/** Tone curve: KvxFrameTone. */
KVX_API uint32_t KvxFrameConverter_SetTone(KvxFrameConverter* converter, uint32_t tone) KVX_NOEXCEPT;
/** A tone curve of 2 to 65536 outputs, evenly spaced from black to white, which the converter copies. */
KVX_API uint32_t KvxFrameConverter_SetToneTable(KvxFrameConverter* converter, const uint16_t* table,
                                                size_t count) KVX_NOEXCEPT;

/**
 * The gains that make a grey place of the frame grey, for KvxFrameConverter_SetGains(). The levels of the finish count.
 *
 * @param place at least a tile that is neither clipped nor black
 * @param gains receives those of red, green, blue and clear sites
 */
KVX_API uint32_t KvxFrameConverter_MeasureGrey(KvxFrameConverter* converter, const KvxFrameSource* source,
                                               const _KvxRect* place, double gains[4]) KVX_NOEXCEPT;

/**
 * Converts one frame. After the first frame of a size and format it allocates nothing.
 *
 * @param source      a frame of this converter's family, in any layout
 * @param destination a picture of the same size, in any colour format; must not overlap the source
 * @return 0; 0x80070008 null data; 0x80070007 invalid views, another family, different sizes, overlapping buffers,
 * levels or a camera profile that do not fit the frame; the component's result if the component fails
 */
KVX_API uint32_t KvxFrameConverter_Convert(KvxFrameConverter* converter, const KvxFrameSource* source,
                                           const KvxFrameDestination* destination) KVX_NOEXCEPT;

/**
 * What was applied to the last frame: 1 and 0 before the first one and without a finish.
 *
 * @param gains    receives measured times given gains of red, green, blue and clear sites; may be null
 * @param exposure receives measured plus given exposure in EV; may be null
 */
KVX_API uint32_t KvxFrameConverter_LastReading(KvxFrameConverter* converter, double gains[4],
                                               double* exposure) KVX_NOEXCEPT;

/** Frees the working memory; settings stay. */
KVX_API uint32_t KvxFrameConverter_Release(KvxFrameConverter* converter) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
