/**
 * @file
 * Unpacks and packs samples of 10, 12 and 14 bits, as cameras send them.
 *
 * A word is a right-aligned 16-bit little-endian sample, 0 to 2^depth - 1. Packing drops bits above the depth, so they
 * never change a neighbour. Unpacking ignores the unused bits of a group; packing a whole group clears them.
 *
 * Functions keep no state: any number of threads may call them. Source and destination must not overlap. A call that
 * throws writes nothing.
 */
#ifndef KVXFRAME_PACKING_H
#define KVXFRAME_PACKING_H

#include <cstddef>
#include <cstdint>
#include <optional>

#include "KvxFrame/Format.h"

namespace kvx::frame {

/**
 * Order of the bits in memory.
 *
 * Samples form groups that start on a byte. The drawings show the bytes of a group in memory order, bit 7 of each on
 * the left; a, b, c and d are its samples, a9:2 are bits 9 to 2 of a, "-" is unused.
 *
 * The last group of a sequence may be incomplete. With the Mipi layouts it still takes all its bytes, as on that
 * interface; with the others as many bytes as its samples need.
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

/** Padding of the rows of a packed image. */
enum class RowPadding : uint8_t {
    Line,  ///< each row starts on a byte, with a new group
    Image  ///< the image is one sequence of samples; a row may begin within a byte. The Mipi layouts have no such
           ///< form: there it is line padding without bytes between rows
};

/** Description of a packed image. */
struct PackedImage {
    Packing packing;                        ///< of the samples
    uint32_t width;                         ///< samples in a row: 1 to 2^31 - 1
    uint32_t height;                        ///< rows: 1 to 2^31 - 1
    RowPadding padding = RowPadding::Line;  ///< padding of the rows
    /** Bytes from the start of a row to the next, at least PackedBytes(packing, width); 0 stands for exactly these.
     * With image padding it must be 0. */
    size_t lineStep = 0;
};

/** The packing of a format; std::nullopt for bytes and for words that are right-aligned or big-endian. */
KVX_API std::optional<Packing> PackingOf(const Format& format) noexcept;

/** Bits of a sample: 10, 12 or 14; 0 for an invalid packing. */
KVX_API unsigned PackedDepth(Packing packing) noexcept;

/**
 * Size of a sequence of samples, such as a row, in bytes.
 *
 * @param samples up to SIZE_MAX / 2
 * @return whole bytes, see Packing; 0 for an invalid packing
 */
KVX_API size_t PackedBytes(Packing packing, size_t samples) noexcept;

/**
 * Size of an image in bytes, without padding after the last row.
 *
 * @throws Error 0x80070007 for a member out of range, see PackedImage
 */
KVX_API size_t PackedImageBytes(const PackedImage& image);

/**
 * Determines the row padding of an image from its size.
 *
 * @param size     bytes of the whole image, including padding after the last row
 * @param multiple with line padding, rows take a multiple of this number of bytes: 1 to 65536
 * @return the image; with line padding if both paddings give this size, as for some small images
 * @throws Error 0x80070007 if `size` is neither of the two possible sizes, which what() names, or a number is out of
 *         range
 */
KVX_API PackedImage PackedImageOfSize(Packing packing, uint32_t width, uint32_t height, size_t size,
                                      size_t multiple = 1);

/**
 * Unpacks an image to words.
 *
 * @param packed     `packedSize` bytes, at least the size of the image; at any address
 * @param words      the first sample of the first row; at any address. Only samples are written, no padding
 * @param wordsStep  bytes from the start of a row to the next; negative if rows are stored from bottom to top. At least
 *                   2 * width in magnitude, unless there is only one row
 * @param threads    threads to use at most, 1 to 1024; small images take fewer. 0: OpenMP's setting, which does not
 *                   change
 * @throws Error 0x80070008 for a null pointer; 0x80070007 for a number out of range or a buffer smaller than the image;
 *         what() then gives the sizes with both paddings
 */
KVX_API void UnpackImage(const PackedImage& image, const void* packed, size_t packedSize, void* words,
                         ptrdiff_t wordsStep, int threads = 0);

/**
 * Packs an image of words. Arguments and errors are those of UnpackImage(), in the other direction.
 *
 * Exactly the bytes of the rows are written, unused bits after the last sample as zeros; padding keeps its content.
 */
KVX_API void PackImage(const PackedImage& image, const void* words, ptrdiff_t wordsStep, void* packed,
                       size_t packedSize, int threads = 0);

/**
 * Unpacks samples `first` to `first` + `count` - 1 of a sequence; `first` may be within a group.
 *
 * @param packed the sequence from its sample 0, `packedSize` bytes: at least PackedBytes(packing, first + count)
 * @param words  `count` words; may be null if `count` is 0
 * @throws Error 0x80070008 for a null pointer; 0x80070007 for an invalid packing or a range that ends after the buffer
 */
KVX_API void UnpackSamples(Packing packing, const void* packed, size_t packedSize, size_t first, size_t count,
                           uint16_t* words);

/**
 * Packs words as samples `first` to `first` + `count` - 1 of a sequence. All other samples keep their values, also
 * those in the same bytes. Ranges that share a group must not be packed at the same time. Arguments and errors are
 * those of UnpackSamples(), in the other direction.
 */
KVX_API void PackSamples(Packing packing, const uint16_t* words, size_t first, size_t count, void* packed,
                         size_t packedSize);

}  // namespace kvx::frame

#endif
