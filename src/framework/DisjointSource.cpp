#include "framework/DisjointSource.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace kvx {
namespace {

struct AddressRange {
    int64_t begin, end;
};

AddressRange RangeOf(const ByteRows& rows) {
    const auto first = reinterpret_cast<intptr_t>(rows.data);
    const int64_t last = first + (rows.rows - 1) * rows.lineStep;
    return {std::min<int64_t>(first, last), std::max<int64_t>(first, last) + rows.rowBytes};
}

bool ShareMemory(const ByteRows& a, const ByteRows& b) {
    if (a.rows == 0 || b.rows == 0) return false;
    const AddressRange rangeA = RangeOf(a), rangeB = RangeOf(b);
    return rangeA.begin < rangeB.end && rangeB.begin < rangeA.end;
}

}  // namespace

std::optional<ByteRows> DisjointSource::Take(const ByteRows& source, const ByteRows& destination) noexcept {
    Release();
    if (!ShareMemory(source, destination)) return source;
    m_copy.reset(new (std::nothrow) uint8_t[static_cast<size_t>(source.rows * source.rowBytes)]);
    if (!m_copy) return std::nullopt;
    const ByteRows copy = {m_copy.get(), source.rows, source.rowBytes, source.rowBytes};
    for (int64_t row = 0; row < source.rows; ++row)
        std::memcpy(m_copy.get() + row * copy.lineStep,
                    static_cast<const uint8_t*>(source.data) + row * source.lineStep,
                    static_cast<size_t>(source.rowBytes));
    return copy;
}

}  // namespace kvx
