/** The caller's functions, where a conversion exchanges rows with it instead of using its buffers. */
#pragma once

#include "KvxDemosaicing/KvxRows.h"

namespace kvx {

struct RowExchange {
    KvxRowSource source;
    KvxPixelSink sink;

    bool IsComplete() const {
        return source.read && sink.write;
    }
    void Read(uint32_t row, uint32_t column, uint32_t count, uint16_t* samples) const {
        source.read(source.context, row, column, count, samples);
    }
    /** @param planes red, green and blue, with KVX_ROW_PADDING bytes behind each */
    template <class Planes>
    void Write(uint32_t row, uint32_t column, uint32_t count, const Planes& planes) const {
        sink.write(sink.context, row, column, count, planes[0], planes[1], planes[2]);
    }
};

}  // namespace kvx
