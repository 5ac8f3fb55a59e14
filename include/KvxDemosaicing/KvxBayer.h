/**
 * @file
 * The Bayer component: raw frames of 2x2 colour mosaics become three-channel images.
 *
 * Life cycle: KvxBayer_CreateComponent(), parameters through KvxBayer_GetComponent(), optionally KvxBayer_AllocData(),
 * KvxBayer_ConvertImage() once per frame, KvxBayer_DeleteComponent().
 *
 * | parameter      | type    | default | range  | meaning                                              |
 * |----------------|---------|---------|--------|------------------------------------------------------|
 * | "BayerAlgType" | integer | 0       | 0 to 4 | one of KvxBayerAlgorithm; 3 and 4 convert as 0 does  |
 * | "NoRealloc"    | integer | 0       | 0 to 1 | kept for callers that set it; no effect              |
 *
 * Threads: a component serves one conversion at a time; two components never disturb each other. A conversion spreads
 * its work over the cores (OpenMP); the picture is the same for any number of threads. Image buffers belong to the
 * caller.
 */
#ifndef KVXDEMOSAICING_KVXBAYER_H
#define KVXDEMOSAICING_KVXBAYER_H

#include "KvxDemosaicing/KvxComponent.h"
#include "KvxDemosaicing/KvxImage.h"

/** Values of "BayerAlgType" and of the `algType` argument of the flat functions. */
enum KvxBayerAlgorithm {
    KvxBayerAlgorithm_Bilinear = 0,
    KvxBayerAlgorithm_IPP = 1,      /**< in-house interpolator: by far the best pictures, at a fraction of the speed */
    KvxBayerAlgorithm_EdgeAware = 2 /**< green along the weaker of the two gradients, red and blue bilinear */
};

#ifdef __cplusplus
/** The converter. The order of the virtual functions is part of the binary interface. */
class KVX_API KvxBayer {
public:
    /** Same as KvxBayer_CreateComponent(). */
    static KvxBayer* CreateComponent() noexcept;
    /** Same as KvxBayer_DeleteComponent(). */
    static void DeleteComponent(KvxBayer* component) noexcept;

    /** The parameter interface; lives as long as this object. */
    virtual KvxComponent* GetComponent() noexcept = 0;
    /**
     * Converts with equal sample widths: a 16-bit source writes 16-bit samples whatever `dst->pixelType` says. The
     * routing of KvxBayer_ConvertImage() is not applied; result codes are the same but for the two bare ones.
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

/** A new component with default parameters, to be given to KvxBayer_DeleteComponent(); null without memory. */
KVX_API KvxBayer* KvxBayer_CreateComponent(void) KVX_NOEXCEPT;

/** The parameter interface of a component, which stays its owner; null in, null out. */
KVX_API KvxComponent* KvxBayer_GetComponent(KvxBayer* component) KVX_NOEXCEPT;

/**
 * Optional: checks the source format against the current algorithm, releases what is kept from earlier frames, and
 * makes the object of the in-house algorithm; its working memory comes with the first frame. A source that is not Bayer
 * releases nothing. The image buffers are not looked at; nothing is written to `dst`.
 *
 * @return 0; 0x80050007 null argument, or a source that the current algorithm cannot convert; 0x80050009 no memory
 */
KVX_API uint32_t KvxBayer_AllocData(KvxBayer* component, const _KvxImage* src, _KvxImage* dst) KVX_NOEXCEPT;

/**
 * Converts one frame.
 *
 * Equal depth classes (for example "BayerRG12" to "RGB12"): the algorithm is that of "BayerAlgType"; the channel order
 * is blue-first for the BGR formats and red-first for any other destination; three samples per pixel are written,
 * never an alpha.
 *
 * Unpacked 10 or 12-bit sources to "RGB8" or "BGR8": bilinear, then each sample is shifted right by 2 or 4, of which
 * the low byte is kept (bits above the depth do not make it white). A source that is not Bayer is read as GR.
 *
 * Bilinear and edge-aware: a pixel whose 3x3 neighbourhood leaves the frame takes the value of its neighbour inside;
 * frames of fewer than three rows or columns come out black.
 *
 * In-house: an odd size is completed to whole cells of the pattern (the row or column after the last repeats the one
 * two before it); beyond that, the frame goes on as in a mirror. The output is clamped to 0..(1 << src->pixelDepth) -
 * 1; larger samples are taken for the largest. A `pixelDepth` of 0 means that of the format; one beyond the sample's
 * bits means all of them. In a frame of one row or one column, a colour that no sample has follows the others.
 *
 * @param component from KvxBayer_CreateComponent(); used by one thread at a time
 * @param src an unpacked Bayer format, `height` rows of `lineStep` bytes. Any line step that holds a row will do.
 * @param dst of the source's width and height (from 10 or 12 bits to 8: at least); the caller sets `pixelType`,
 *            `lineStep` and `data` and owns the buffer. Only pixels are written: row padding keeps its content. The
 *            buffers must not overlap.
 * @return 0;
 *         0x80050001 a frame without pixels;
 *         0x80050007 null component or null `data`, with equal depth classes a source that is not unpacked Bayer, a
 *         destination of another size, a line step that cannot hold a row (0 never does), a size or line step past
 *         INT_MAX;
 *         0x80050009 no working memory;
 *         7 (bare) a null record; 1 (bare) depth classes, packings included, that differ in any other way than above.
 *         Whatever is refused leaves the destination as it was.
 */
KVX_API uint32_t KvxBayer_ConvertImage(KvxBayer* component, const _KvxImage* src, _KvxImage* dst) KVX_NOEXCEPT;

/** Releases what the component keeps between frames; the parameters stay. Null is ignored. */
KVX_API void KvxBayer_ReleaseData(KvxBayer* component) KVX_NOEXCEPT;

/** Destroys a component and the interface that KvxBayer_GetComponent() gave. Null is ignored. */
KVX_API void KvxBayer_DeleteComponent(KvxBayer* component) KVX_NOEXCEPT;

/**
 * The image-processing library's colour-conversion code (cv::ColorConversionCodes) for a Bayer format.
 *
 * @param pixelType an unpacked Bayer format, 8 to 16 bits
 * @param algType 2 gives the edge-aware code, any other value the bilinear one
 * @param isBGR true for blue-first output
 * @return the code: 46 to 49 bilinear, 135 to 138 edge-aware; -1 for every other format. Any thread.
 */
KVX_API int PixelTypeToBayerType(uint32_t pixelType, int algType, bool isBGR) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
