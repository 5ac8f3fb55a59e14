/**
 * @file
 * The Bayer component converts raw frames with a 2x2 colour mosaic into three-channel images.
 *
 * Order of calls: KvxBayer_CreateComponent(), parameters through KvxBayer_GetComponent(), optionally
 * KvxBayer_AllocData(), KvxBayer_ConvertImage() once per frame, KvxBayer_DeleteComponent().
 *
 * | parameter      | type    | default | range  | meaning                                              |
 * |----------------|---------|---------|--------|------------------------------------------------------|
 * | "BayerAlgType" | integer | 0       | 0 to 4 | one of KvxBayerAlgorithm; 3 and 4 convert as 0 does  |
 * | "NoRealloc"    | integer | 0       | 0 to 1 | no effect; exists for callers that set it            |
 *
 * Threads: a component is used by one thread at a time; different components are independent. A conversion spreads its
 * work over OpenMP threads (KvxDemosaicing.h has rules for fork()); the picture is the same for any number of threads.
 * The caller owns all image buffers.
 */
#ifndef KVXDEMOSAICING_KVXBAYER_H
#define KVXDEMOSAICING_KVXBAYER_H

#include "KvxDemosaicing/KvxComponent.h"
#include "KvxDemosaicing/KvxImage.h"

/** Values of "BayerAlgType" and of the `algType` argument of the flat functions. */
enum KvxBayerAlgorithm {
    KvxBayerAlgorithm_Bilinear = 0,
    KvxBayerAlgorithm_IPP = 1,      /**< the in-house interpolator: by far the best pictures, much slower */
    KvxBayerAlgorithm_EdgeAware = 2 /**< green along the weaker of two gradients, red and blue bilinear */
};

#ifdef __cplusplus
/** The converter. The order of the virtual functions is part of the binary interface. */
class KVX_API KvxBayer {
public:
    /** Same as KvxBayer_CreateComponent(). */
    static KvxBayer* CreateComponent() noexcept;
    /** Same as KvxBayer_DeleteComponent(). */
    static void DeleteComponent(KvxBayer* component) noexcept;

    /** The parameter interface, which lives as long as this object. */
    virtual KvxComponent* GetComponent() noexcept = 0;
    /**
     * Like KvxBayer_ConvertImage() for equal depth classes, whatever `dst->pixelType` is: a 16-bit source always gives
     * 16-bit samples. Returns no bare codes.
     */
    virtual uint32_t ConvertImage(const _KvxImage* src, _KvxImage* dst) noexcept = 0;
    /** Same as KvxBayer_AllocData(). */
    virtual uint32_t AllocData(const _KvxImage* src, _KvxImage* dst) noexcept = 0;
    /** Same as KvxBayer_ReleaseData(). */
    virtual void ReleaseData() noexcept = 0;

protected:
    ~KvxBayer() = default;
};
#else
typedef struct KvxBayer KvxBayer;
#endif

KVX_EXTERN_C_BEGIN

/** A new component with default parameters; null when out of memory. Delete it by KvxBayer_DeleteComponent(). */
KVX_API KvxBayer* KvxBayer_CreateComponent(void) KVX_NOEXCEPT;

/** The parameter interface of a component, which owns it. Null for null. */
KVX_API KvxComponent* KvxBayer_GetComponent(KvxBayer* component) KVX_NOEXCEPT;

/**
 * Optional: checks the source format, releases what the component keeps from earlier frames and, for the in-house
 * algorithm, creates the interpolator. The first frame allocates its working memory. A source that is not Bayer
 * releases nothing. Reads only the two formats and writes nothing.
 *
 * @return 0; 0x80050007 null argument or a source that cannot be converted; 0x80050009 out of memory
 */
KVX_API uint32_t KvxBayer_AllocData(KvxBayer* component, const _KvxImage* src, _KvxImage* dst) KVX_NOEXCEPT;

/**
 * Converts one frame.
 *
 * Equal depth classes (for example "BayerRG12" to "RGB12"): "BayerAlgType" selects the algorithm. The channel order is
 * blue-first for the BGR formats and red-first for every other destination. Three samples per pixel are written, never
 * an alpha.
 *
 * Unpacked 10 or 12-bit sources to "RGB8" or "BGR8": bilinear. Each sample is shifted right by 2 or 4 and its low byte
 * is kept, so that samples above the depth wrap around. A source that is not Bayer is read as GR. The picture has the
 * source's width and height; those of the destination are not read.
 *
 * Bilinear and edge-aware: a pixel at the border of the frame takes the value of its inner neighbour; frames of fewer
 * than three rows or columns become black.
 *
 * In-house: an odd size is completed to whole cells of the pattern (the row or column after the last repeats the one
 * two before it); beyond that the frame is mirrored. The output is clamped to 0..(1 << src->pixelDepth) - 1, and larger
 * source samples count as the largest value. A `pixelDepth` of 0 means the depth of the format; a value above the
 * sample's bits means all of them. In a frame of one row or one column, a missing colour takes the value of the others.
 * A frame has at most 2^30 rows.
 *
 * @param component from KvxBayer_CreateComponent(); used by one thread at a time
 * @param src an unpacked Bayer format; `height` rows of any `lineStep` that holds a row
 * @param dst the caller sets `pixelType`, `lineStep`, `data` and, for equal depth classes, the source's `width` and
 *            `height`. Only pixels are written, not the row padding. The buffers may overlap, in place included: the
 *            source is then copied first, which costs time and memory.
 * @return 0;
 *         0x80050001 a frame without pixels;
 *         0x80050007 null component or null `data`; a line step that does not hold a row (0 never does); a size or
 *         line step above INT_MAX; more rows than the in-house algorithm takes; with equal depth classes also a source
 *         that is not unpacked Bayer, or a destination of another size;
 *         0x80050009 out of memory;
 *         7 (bare) null record; 1 (bare) any other pair of depth classes or packings.
 *         A call that fails leaves the destination unchanged.
 */
KVX_API uint32_t KvxBayer_ConvertImage(KvxBayer* component, const _KvxImage* src, _KvxImage* dst) KVX_NOEXCEPT;

/** Releases what the component keeps between frames. The parameters keep their values. Null is ignored. */
KVX_API void KvxBayer_ReleaseData(KvxBayer* component) KVX_NOEXCEPT;

/** Deletes a component and its parameter interface. Null is ignored. */
KVX_API void KvxBayer_DeleteComponent(KvxBayer* component) KVX_NOEXCEPT;

/**
 * OpenCV's colour-conversion code (cv::ColorConversionCodes) for a Bayer format.
 *
 * @param pixelType an unpacked Bayer format of 8 to 16 bits
 * @param algType 2 gives the edge-aware code, any other value the bilinear one
 * @param isBGR true for blue-first output
 * @return the code, 46 to 49 (bilinear) or 135 to 138 (edge-aware); -1 for every other format. Any thread.
 */
KVX_API int PixelTypeToBayerType(uint32_t pixelType, int algType, bool isBGR) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
