/**
 * @file
 * Packed samples of 10, 12 and 14 bits, as cameras send them, to words and back.
 *
 * A word is a right-aligned 16-bit little-endian sample, 0 to 2^depth - 1. Packing cuts a word to the depth: bits above
 * it are dropped and never reach a neighbour. Bits of a group that no sample uses are ignored, and zero once the whole
 * group has been packed.
 *
 * Functions keep no state: any thread, several at once. Source and destination must not overlap. A refused call has
 * written nothing.
 */
#ifndef KVXFRAME_PACKING_H
#define KVXFRAME_PACKING_H

#include <cstddef>
#include <cstdint>
#include <optional>

#include "KvxFrame/Format.h"

namespace kvx::frame {

/**
 * Where the bits of the samples are.
 *
 * Samples come in groups that start with a byte. The drawings show a group's bytes in the order of memory, bit 7 of
 * each on the left; a, b, c and d are its samples with their bits, "-" is unused. a9:2 are the bits 9 to 2 of a.
 *
 * At the end of a sequence a group may lack samples. With the layouts called Mipi it takes as many bytes as any other,
 * as lines of that interface do; with the others as many as hold the samples that are there.
 */
enum class Packing : uint8_t {
    /**
     * PFNC 10p, BayerRG10p: least significant bit first, without gaps. 4 samples in 5 bytes.
     *
     *     a7:0 | b5:0 a9:8 | c3:0 b9:6 | d1:0 c9:4 | d9:2
     */
    Pfnc10p,
    /**
     * PFNC 12p, BayerRG12p: the same with 12 bits. 2 samples in 3 bytes.
     *
     *     a7:0 | b3:0 a11:8 | b11:4
     */
    Pfnc12p,
    /**
     * PFNC 14p, BayerRG14p: the same with 14 bits. 4 samples in 7 bytes.
     *
     *     a7:0 | b1:0 a13:8 | b9:2 | c3:0 b13:10 | c11:4 | d5:0 c13:12 | d13:6
     */
    Pfnc14p,
    /**
     * GigE Vision 10Packed, BayerRG10Packed: low bits between two high bytes. 2 samples in 3 bytes.
     *
     *     a9:2 | - - b1:0 - - a1:0 | b9:2
     */
    GigE10Packed,
    /**
     * GigE Vision 12Packed, BayerRG12Packed. 2 samples in 3 bytes.
     *
     *     a11:4 | b3:0 a3:0 | b11:4
     */
    GigE12Packed,
    /**
     * MIPI CSI-2 RAW10, V4L2 SRGGB10P: low bits after four high bytes. 4 samples in 5 bytes.
     *
     *     a9:2 | b9:2 | c9:2 | d9:2 | d1:0 c1:0 b1:0 a1:0
     */
    Mipi10,
    /**
     * MIPI CSI-2 RAW12, V4L2 SRGGB12P. 2 samples in 3 bytes.
     *
     *     a11:4 | b11:4 | b3:0 a3:0
     */
    Mipi12,
    /**
     * MIPI CSI-2 RAW14, V4L2 SRGGB14P. 4 samples in 7 bytes.
     *
     *     a13:6 | b13:6 | c13:6 | d13:6 | b1:0 a5:0 | c3:0 b5:2 | d5:0 c5:4
     */
    Mipi14,
    /**
     * Words with the sample in their high bits. 1 sample in 2 bytes.
     *
     *     a1:0 - - - - - - | a9:2
     */
    Msb10,
    Msb12,  ///< a3:0 - - - - | a11:4
    Msb14,  ///< a5:0 - - | a13:6
};

/** How the rows of a packed image follow each other. */
enum class RowPadding : uint8_t {
    Line,  ///< each row starts with a byte, and a group
    Image  ///< the image is one sequence of samples; a row can start inside a byte. The layouts called Mipi have no
           ///< such form: there this is line padding without a byte between the rows
};

/** What a packed image looks like. */
struct PackedImage {
    Packing packing;                        ///< of its samples
    uint32_t width;                         ///< samples in a row: 1 to 2^31 - 1
    uint32_t height;                        ///< rows: 1 to 2^31 - 1
    RowPadding padding = RowPadding::Line;  ///< how rows follow each other
    /** Bytes from the start of a row to that of the next, at least PackedBytes(packing, width). 0: just these. With
     *  image padding rows have no such step: 0. */
    size_t lineStep = 0;
};

/** The packing of a format; nothing for bytes, and for words that are right-aligned or big-endian. */
KVX_API std::optional<Packing> PackingOf(const Format& format) noexcept;

/** Bits of a sample: 10, 12 or 14. 0 for a value that is no packing. */
KVX_API unsigned PackedDepth(Packing packing) noexcept;

/**
 * Bytes of a sequence of samples, such as a row.
 *
 * @param samples up to SIZE_MAX / 2
 * @return whole bytes, see Packing; 0 for a value that is no packing
 */
KVX_API size_t PackedBytes(Packing packing, size_t samples) noexcept;

/**
 * Bytes from the first of an image to its last; behind the last row there need be no padding.
 *
 * @throws Error 0x80070007 for an image with a member out of range, see PackedImage
 */
KVX_API size_t PackedImageBytes(const PackedImage& image);

/**
 * Finds out from the size of an image how its rows follow each other.
 *
 * @param size     bytes that the whole image takes, padding behind its last row included
 * @param multiple with line padding, rows take a multiple of so many bytes: 1 to 65536
 * @return the image; with line padding where both paddings give this size, as a small image's may
 * @throws Error 0x80070007 when `size` is neither of the two possible ones, which what() names; or a number is out of
 *         range
 */
KVX_API PackedImage PackedImageOfSize(Packing packing, uint32_t width, uint32_t height, size_t size,
                                      size_t multiple = 1);

/**
 * Unpacks an image to words.
 *
 * @param packed     `packedSize` bytes, which may be more than the image takes; at any address
 * @param words      the first sample of the first row; at any address. Only samples are written, no padding of rows
 * @param wordsStep  bytes from the start of a row to that of the next; negative for rows from the bottom up. Its
 *                   magnitude is at least 2 * width, unless there is one row
 * @param threads    threads to use at most, 1 to 1024, small images take fewer; 0: as many as OpenMP is set to. That
 *                   setting stays as it is
 * @throws Error 0x80070008 for a null pointer; 0x80070007 for a number out of range, or a buffer smaller than the
 *         image, with the sizes by either padding in what()
 */
KVX_API void UnpackImage(const PackedImage& image, const void* packed, size_t packedSize, void* words,
                         ptrdiff_t wordsStep, int threads = 0);

/**
 * Packs an image of words. Arguments and errors are those of UnpackImage(), the direction is the other.
 *
 * Exactly the bytes of rows are written, bits behind the last sample as zeros; padding of lines stays as it was.
 */
KVX_API void PackImage(const PackedImage& image, const void* words, ptrdiff_t wordsStep, void* packed,
                       size_t packedSize, int threads = 0);

/**
 * Unpacks samples `first` to `first` + `count` - 1 of a sequence; `first` may be inside a group.
 *
 * @param packed the sequence from its sample 0, `packedSize` bytes. The bytes of a sequence that ends with the range
 *               must be there, see PackedBytes()
 * @param words  `count` words; may be null when `count` is 0
 * @throws Error 0x80070008 for a null pointer; 0x80070007 for no packing, or a range that ends behind the buffer
 */
KVX_API void UnpackSamples(Packing packing, const void* packed, size_t packedSize, size_t first, size_t count,
                           uint16_t* words);

/**
 * Packs words as samples `first` to `first` + `count` - 1 of a sequence. All other samples of the sequence stay, those
 * in the same bytes, too. Ranges that share a group must not be packed at the same time. Arguments and errors are those
 * of UnpackSamples(), the direction is the other.
 */
KVX_API void PackSamples(Packing packing, const uint16_t* words, size_t first, size_t count, void* packed,
                         size_t packedSize);

}  // namespace kvx::frame

#endif
