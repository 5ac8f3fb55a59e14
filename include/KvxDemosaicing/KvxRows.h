/**
 * @file
 * Conversions that exchange rows with the caller instead of reading and writing images.
 *
 * A caller who processes the samples before the interpolation, or the pixels after it, does so row by row while they
 * are in the cache: no image of words exists in memory.
 */
#ifndef KVXDEMOSAICING_KVXROWS_H
#define KVXDEMOSAICING_KVXROWS_H

#include "KvxDemosaicing/KvxBayer.h"
#include "KvxDemosaicing/KvxTrueSense.h"

/** Bytes after the samples of a row that may be read. */
#define KVX_ROW_PADDING 64

/** Where a conversion takes its samples from. */
typedef struct KvxRowSource {
    void* context; /**< first argument of the function */
    /**
     * Fills `samples` with `count` samples of a row, from `column` on: right-aligned words of the frame's depth. All of
     * them lie inside the frame. A conversion asks for some samples more than once, in any order, from several threads
     * at the same time; it needs the same answer each time. Must not throw.
     */
    void (*read)(void* context, uint32_t row, uint32_t column, uint32_t count, uint16_t* samples);
} KvxRowSource;

/** Where a conversion puts its pixels. */
typedef struct KvxPixelSink {
    void* context; /**< first argument of the function */
    /**
     * Takes `count` pixels of a row, from `column` on: a plane of words for each colour, valid during the call. The
     * KVX_ROW_PADDING bytes after a plane may be read, too; planes may be the same. Each pixel comes once, in any
     * order, from several threads at the same time. In TrueSense frames with samples beyond their depth a row can come
     * again, and counts then. Must not throw.
     */
    void (*write)(void* context, uint32_t row, uint32_t column, uint32_t count, const uint16_t* red,
                  const uint16_t* green, const uint16_t* blue);
} KvxPixelSink;

KVX_EXTERN_C_BEGIN

/**
 * Converts one frame as KvxBayer_ConvertImage() converts it to words of its own depth, by "BayerAlgType".
 *
 * @param frame pixel type, depth, width and height count. Any unpacked Bayer format, those of 8 bits included: their
 *              samples are words here.
 * @param source,sink called before this function returns, by its threads
 * @return 0; 0x80050001 a frame without pixels; 0x80050007 null component or record, or another format; 0x80050008 null
 *         function; 0x80050009 out of memory. A call that fails writes no pixel.
 */
KVX_API uint32_t KvxBayer_ConvertRows(KvxBayer* component, const _KvxImage* frame, const KvxRowSource* source,
                                      const KvxPixelSink* sink) KVX_NOEXCEPT;

/**
 * Converts one frame as KvxTrueSense_ConvertImageWith() does.
 *
 * @param frame pixel type, depth, width and height count. Any TrueSense format, those of 8 bits included: their samples
 *              are words here.
 * @param isBytes 1: the results are those of "RGB8", as words; 0: those of the formats of words, for frames of 8 bits
 *                too, whose results have 8 bits
 * @param params,algorithm as of KvxTrueSense_ConvertImageWith()
 * @param source,sink called before this function returns, by its threads
 * @return as KvxTrueSense_ConvertImageWith(); 0x80060008 also for a null function. A call that fails writes no pixel.
 */
KVX_API uint32_t KvxTrueSense_ConvertRows(KvxTrueSense* component, const _KvxImage* frame, int isBytes,
                                          const tagTrueSenseParam* params, int64_t algorithm,
                                          const KvxRowSource* source, const KvxPixelSink* sink) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
