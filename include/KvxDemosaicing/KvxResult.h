/**
 * @file
 * Result codes of components, flat functions and parameters. (Api_ImageProcess() and its stages have their own.)
 *
 * 0 is success. A failure is 0x80000000 | (component type << 16) | code. The component type is 0 (parameter store),
 * 5 (Bayer) or 6 (TrueSense): 0x80050007 is an invalid argument to the Bayer component. A code means the same in every
 * component. Only KvxBayer_ConvertImage() also returns two codes bare, without component type and top bit.
 */
#ifndef KVXDEMOSAICING_KVXRESULT_H
#define KVXDEMOSAICING_KVXRESULT_H

#include "KvxDemosaicing/KvxApi.h"

/** The codes in the low bits of a result. */
enum KvxResultCode {
    KvxResult_Success = 0,
    /** A conversion step failed; Bayer: a frame without pixels; bare: depths that cannot be combined. */
    KvxResult_ConversionFailed = 1,
    KvxResult_UnknownName = 2,    /**< no parameter has this name */
    KvxResult_WrongType = 3,      /**< the parameter has another type, or the text is not a value of its type */
    KvxResult_OutOfRange = 4,     /**< outside [minimum, maximum], or not a finite number; nothing is stored */
    KvxResult_ReadOnly = 5,       /**< the parameter cannot be written */
    KvxResult_BufferTooSmall = 6, /**< the size argument now holds the size needed, final NUL included */
    /** A null record, a format that is not supported, or a geometry that does not fit the buffers. */
    KvxResult_InvalidArgument = 7,
    KvxResult_NullPointer = 8, /**< a required pointer is null */
    KvxResult_NoMemory = 9     /**< out of memory; TrueSense: also a frame or region without pixels */
};

/** The component types in bits 16 to 23 of a failure. */
enum KvxComponentType { KvxComponentType_ParamStorage = 0, KvxComponentType_Bayer = 5, KvxComponentType_TrueSense = 6 };

KVX_EXTERN_C_BEGIN

/** The result with which a component of this type (KvxComponentType) reports `code` (KvxResultCode). */
static inline KVX_CONSTEXPR uint32_t KvxResult_Of(uint32_t componentType, uint32_t code) {
    return code == KvxResult_Success ? code : 0x80000000u | (componentType << 16) | code;
}

/** True when `result` reports a failure, with or without the top bit. */
static inline KVX_CONSTEXPR bool KvxResult_Failed(uint32_t result) {
    return result != KvxResult_Success;
}

/**
 * The meaning of a result in one English sentence. The sentence does not name the component.
 *
 * @param result what a function with these result codes returned
 * @return a constant text, never null; "unknown result code" for an unknown code. Any thread.
 */
KVX_API const char* KvxResult_Text(uint32_t result) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
