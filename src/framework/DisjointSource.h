/** The source of a conversion, safe from what the conversion writes. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace kvx {

/** Rows of bytes in memory. */
struct ByteRows {
    const void* data;  ///< first byte of the first row
    int64_t rows;
    int64_t rowBytes;
    int64_t lineStep;  ///< bytes from row to row; negative: the first row is the last one in memory
};

/**
 * Gives a conversion rows that it may read while it writes its destination: the caller's own rows, or a private copy
 * where source and destination share memory. An object without a copy owns nothing and costs nothing.
 */
class DisjointSource {
public:
    /**
     * Chooses the rows to read, and releases the copy of an earlier call. Two sets of rows share memory when the
     * address ranges from their first to their last bytes overlap; a destination inside the source's row padding
     * counts as well.
     *
     * @param source at most INT_MAX rows and steps of at most INT_MAX bytes, as of `destination`
     * @return `source`, or a copy of it, which this object owns; nothing when the copy could not be allocated
     */
    std::optional<ByteRows> Take(const ByteRows& source, const ByteRows& destination) noexcept;

    /** Releases the copy. */
    void Release() noexcept {
        m_copy.reset();
    }

private:
    std::unique_ptr<uint8_t[]> m_copy;
};

}  // namespace kvx
