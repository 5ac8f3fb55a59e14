/**
 * @file
 * Components: converters with named parameters.
 *
 * C++ callers use the class KvxComponent, C callers the functions KvxComponent_..., which do the same. (There are no C
 * functions for texts, arrays and commands, as no parameter is of such a kind.) A component belongs to the converter
 * that it came from (KvxBayer_GetComponent()): it lives as long as the converter, is never deleted through this
 * interface, and is used by one thread at a time.
 *
 * Rules of every parameter access:
 * - Names are NUL-terminated and case-sensitive. An unknown name gives 0x80000002, a parameter of another type
 *   0x80000003.
 * - A setter that fails stores nothing. A value outside [minimum, maximum] gives 0x80000004, a parameter that is not
 *   writable 0x80000005. Floating-point setters refuse NaN and infinities; a declared minimum of DBL_MIN means "no
 *   lower bound".
 * - Bool access works on integer parameters with the range 0 to 1.
 * - A text is returned in `buffer`, which has `*size` bytes. If it does not fit, the result is 0x80000006, `*size`
 *   becomes the size needed (final NUL included) and the buffer is not changed. To ask for the size, pass `*size` 0;
 *   `buffer` may then be null.
 * - A null argument gives 0x80000008; GetParamName() returns it with the component's own type.
 * - No parameter is a text, an array or a command. GetParamString(), SetParamString(), GetParamArray(), SetParamArray()
 *   and RunCommand() give 0x80000008 when any pointer is null, even with a `*size` of 0, then 0x80000002 for an unknown
 *   name, else 0x80000003.
 */
#ifndef KVXDEMOSAICING_KVXCOMPONENT_H
#define KVXDEMOSAICING_KVXCOMPONENT_H

#include "KvxDemosaicing/KvxApi.h"
#include "KvxDemosaicing/KvxResult.h"

/** Value type of a parameter. */
enum KvxParamType { KvxParamType_Int = 0, KvxParamType_Float = 2 };

/** Bits of _KvxStParam::flags. */
enum KvxParamAccess { KvxParamAccess_Read = 1, KvxParamAccess_Write = 2 };

/** A parameter's value; _KvxStParam::type says which member holds it. */
typedef union _KvxParamValue {
    int64_t asInt;  /**< KvxParamType_Int */
    double asFloat; /**< KvxParamType_Float */
} _KvxParamValue;

/** The description of one parameter: KvxComponent_GetParamByIdx(). */
typedef struct _KvxStParam {
    uint32_t type;               /**< KvxParamType */
    uint32_t flags;              /**< KvxParamAccess bits */
    char name[256];              /**< NUL-terminated */
    uint8_t reserved264[40];     /**< zero */
    _KvxParamValue defaultValue; /**< may lie below `minValue`; see the rule for DBL_MIN above */
    _KvxParamValue minValue;     /**< smallest value that setters accept */
    _KvxParamValue maxValue;     /**< largest value that setters accept */
    uint8_t reserved328[8];      /**< zero */
    void* value;                 /**< the current value, an int64_t or double; owned by the component */
} _KvxStParam;

static_assert(sizeof(_KvxStParam) == 344 && offsetof(_KvxStParam, name) == 8 &&
                  offsetof(_KvxStParam, reserved264) == 264 && offsetof(_KvxStParam, defaultValue) == 304 &&
                  offsetof(_KvxStParam, maxValue) == 320 && offsetof(_KvxStParam, value) == 336,
              "the parameter descriptor is part of the binary interface");

#ifdef __cplusplus
/** The parameters of a component. The order of the virtual functions is part of the binary interface. */
class KVX_API KvxComponent {
public:
    virtual ~KvxComponent() = default;

    /** 5 for the Bayer component, 6 for the TrueSense component (KvxComponentType). */
    virtual uint8_t GetComponentTypeID() noexcept = 0;
    /** The number of parameters. */
    virtual uint32_t GetParamCount() noexcept = 0;
    /**
     * The name of the parameter at a zero-based index, in order of registration, padded with NULs to `*size` bytes. An
     * index without a parameter gives an empty name and success. Failures (a buffer too small, a null argument) carry
     * this component's type.
     */
    virtual uint32_t GetParamName(uint32_t index, char* buffer, uint32_t* size) noexcept = 0;
    /**
     * The current value as text, in any locale: integers in decimal, doubles in the shortest form that reads back to
     * the same bits. `format` is reserved and may be null.
     */
    virtual uint32_t GetParamAsString(const char* name, char* buffer, uint32_t* size, const char* format) noexcept = 0;
    /** Reads the whole of `text` as a value of the parameter's type, in the form that GetParamAsString() writes. */
    virtual uint32_t SetParamAsString(const char* name, const char* text) noexcept = 0;
    /** @{ Stores a value of the named type; the rules above hold. */
    virtual uint32_t SetParamBool(const char* name, bool value) noexcept = 0;
    virtual uint32_t SetParamInt(const char* name, int64_t value) noexcept = 0;
    virtual uint32_t SetParamFloat(const char* name, double value) noexcept = 0;
    virtual uint32_t SetParamString(const char* name, const char* text) noexcept = 0;
    virtual uint32_t SetParamArray(const char* name, const void* data, uint32_t byteCount) noexcept = 0;
    /** @} */
    /** @{ Reads a value of the named type; the output is written only on success. */
    virtual uint32_t GetParamBool(const char* name, bool* value) noexcept = 0;
    virtual uint32_t GetParamInt(const char* name, int64_t* value) noexcept = 0;
    virtual uint32_t GetParamFloat(const char* name, double* value) noexcept = 0;
    virtual uint32_t GetParamString(const char* name, char* buffer, uint32_t* size) noexcept = 0;
    virtual uint32_t GetParamArray(const char* name, void* data, uint32_t* byteCount) noexcept = 0;
    /** @} */
    /** Runs a command; the rules above hold. */
    virtual uint32_t RunCommand(const char* name) noexcept = 0;
};
#else
typedef struct KvxComponent KvxComponent;
#endif

KVX_EXTERN_C_BEGIN

/**
 * @{
 * The member function of this name, for C. A null component gives 0x80000008, from GetComponentTypeID and
 * GetParamCount 0.
 */
KVX_API uint8_t KvxComponent_GetComponentTypeID(KvxComponent* component) KVX_NOEXCEPT;
KVX_API uint32_t KvxComponent_GetParamCount(KvxComponent* component) KVX_NOEXCEPT;
KVX_API uint32_t KvxComponent_GetParamName(KvxComponent* component, uint32_t index, char* buffer,
                                           uint32_t* size) KVX_NOEXCEPT;
KVX_API uint32_t KvxComponent_GetParamAsString(KvxComponent* component, const char* name, char* buffer,
                                               uint32_t* size) KVX_NOEXCEPT;
KVX_API uint32_t KvxComponent_SetParamAsString(KvxComponent* component, const char* name,
                                               const char* text) KVX_NOEXCEPT;
KVX_API uint32_t KvxComponent_GetParamBool(KvxComponent* component, const char* name, bool* value) KVX_NOEXCEPT;
KVX_API uint32_t KvxComponent_SetParamBool(KvxComponent* component, const char* name, bool value) KVX_NOEXCEPT;
KVX_API uint32_t KvxComponent_GetParamInt(KvxComponent* component, const char* name, int64_t* value) KVX_NOEXCEPT;
KVX_API uint32_t KvxComponent_SetParamInt(KvxComponent* component, const char* name, int64_t value) KVX_NOEXCEPT;
KVX_API uint32_t KvxComponent_GetParamFloat(KvxComponent* component, const char* name, double* value) KVX_NOEXCEPT;
KVX_API uint32_t KvxComponent_SetParamFloat(KvxComponent* component, const char* name, double value) KVX_NOEXCEPT;
/** @} */

/**
 * The description (type, access, range, default, address of the value) of the parameter at a zero-based index.
 *
 * @return 0; 0x80000007 no such parameter, or a component that this library did not make; 0x80000008 null argument.
 *         `*param` is written only on success.
 */
KVX_API uint32_t KvxComponent_GetParamByIdx(KvxComponent* component, uint32_t index, _KvxStParam* param) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
