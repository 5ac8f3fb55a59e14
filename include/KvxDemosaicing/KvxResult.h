/**
 * @file
 * Result codes of components, flat functions and parameters. (Api_ImageProcess() and its stages have their own.)
 *
 * 0 is success. A failure is 0x80000000 | (component type << 16) | code, where the component type is 0 (parameter
 * store), 5 (Bayer) or 6 (TrueSense): 0x80050007 is an invalid argument to the Bayer component. The codes mean the
 * same in every component. KvxBayer_ConvertImage() alone also returns two of them bare, without type and top bit.
 */
#ifndef KVXDEMOSAICING_KVXRESULT_H
#define KVXDEMOSAICING_KVXRESULT_H

#include "KvxDemosaicing/KvxApi.h"

/** The codes in the low bits of a result. */
enum KvxResultCode {
    KvxResult_Success = 0,
    /** A step failed; in the Bayer component also: there are no pixels. Bare: depths that cannot be combined. */
    KvxResult_ConversionFailed = 1,
    KvxResult_UnknownName = 2,    /**< no parameter has this name */
    KvxResult_WrongType = 3,      /**< the parameter has another type, or the text is no value of its type */
    KvxResult_OutOfRange = 4,     /**< outside [minimum, maximum], or not a finite number; nothing is stored */
    KvxResult_ReadOnly = 5,       /**< the parameter cannot be written */
    KvxResult_BufferTooSmall = 6, /**< the needed size, with the final NUL, has been written to the size argument */
    /** A null record, a format that is not supported, or a geometry that does not fit the buffers. */
    KvxResult_InvalidArgument = 7,
    KvxResult_NullPointer = 8, /**< a pointer that is needed is null */
    KvxResult_NoMemory = 9     /**< no working memory; in the TrueSense component also: there are no pixels */
};

/** The component types in bits 16 to 23 of a failure. */
enum KvxComponentType { KvxComponentType_ParamStorage = 0, KvxComponentType_Bayer = 5, KvxComponentType_TrueSense = 6 };

KVX_EXTERN_C_BEGIN

/** `code` (KvxResultCode) in the form in which a component of this type (KvxComponentType) returns it. */
static inline KVX_CONSTEXPR uint32_t KvxResult_Of(uint32_t componentType, uint32_t code) {
    return code == KvxResult_Success ? code : 0x80000000u | (componentType << 16) | code;
}

/** True when `result` reports a failure; bare codes, which lack the top bit, included. */
static inline KVX_CONSTEXPR bool KvxResult_Failed(uint32_t result) {
    return result != KvxResult_Success;
}

/**
 * The meaning of a result code in one English sentence, without the component it comes from.
 *
 * @param result what a function that names these codes returned
 * @return a constant text, never null; an unknown code gives "unknown result code". Any thread.
 */
KVX_API const char* KvxResult_Text(uint32_t result) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
