#include "KvxDemosaicing/KvxResult.h"

const char* KvxResult_Text(uint32_t result) noexcept {
    constexpr uint32_t formBits = 0xFF000000;  // 0x80 in a full code, 0 in a bare one
    const uint32_t form = result & formBits;
    if (form != 0x80000000u && form != 0) return "unknown result code";
    switch (result & 0xFFFF) {
        case KvxResult_Success:
            return result == 0 ? "success" : "unknown result code";
        case KvxResult_ConversionFailed:
            return "a conversion step failed, there are no pixels, or the depths cannot be combined";
        case KvxResult_UnknownName:
            return "no parameter has this name";
        case KvxResult_WrongType:
            return "the parameter is of another type, or the text is no value of its type";
        case KvxResult_OutOfRange:
            return "the value is outside the parameter's range";
        case KvxResult_ReadOnly:
            return "the parameter cannot be written";
        case KvxResult_BufferTooSmall:
            return "the buffer is too small; the needed size was written back";
        case KvxResult_InvalidArgument:
            return "an argument is invalid: a null record, an unsupported format or algorithm, or a geometry that does "
                   "not fit the buffers";
        case KvxResult_NullPointer:
            return "a pointer that is needed is null";
        case KvxResult_NoMemory:
            return "working memory could not be allocated";
        default:
            return "unknown result code";
    }
}
