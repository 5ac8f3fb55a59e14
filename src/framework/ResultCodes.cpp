#include "KvxDemosaicing/KvxResult.h"

const char* KvxResult_Text(uint32_t result) noexcept {
    const uint32_t code = result & 0xFFFF;
    const bool isBare = code == result;
    const bool isFull = result == KvxResult_Of(KvxComponentType_ParamStorage, code) ||
                        result == KvxResult_Of(KvxComponentType_Bayer, code) ||
                        result == KvxResult_Of(KvxComponentType_TrueSense, code);
    if (!isBare && !isFull) return "unknown result code";
    switch (code) {
        case KvxResult_Success:
            return "success";
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
