/** Vectors that begin with a line of the cache: rows of whole vector registers are never loaded from two lines. */
#pragma once

#include <cstddef>
#include <new>
#include <vector>

namespace kvx::frame {

template <class Value>
struct CacheLineAllocator {
    using value_type = Value;
    static constexpr std::align_val_t kCacheLine{64};

    CacheLineAllocator() = default;
    template <class Other>
    CacheLineAllocator(const CacheLineAllocator<Other>&) {}

    Value* allocate(size_t count) {
        if (count > size_t(-1) / sizeof(Value)) throw std::bad_array_new_length();
        return static_cast<Value*>(::operator new(count * sizeof(Value), kCacheLine));
    }
    void deallocate(Value* values, size_t) {
        ::operator delete(values, kCacheLine);
    }
    bool operator==(const CacheLineAllocator&) const = default;
};

template <class Value>
using AlignedVector = std::vector<Value, CacheLineAllocator<Value>>;

}  // namespace kvx::frame
