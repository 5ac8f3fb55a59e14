/** The parameter store behind every component. */
#pragma once

#include <vector>

#include "KvxDemosaicing/KvxComponent.h"

/**
 * A list of named parameters. The values belong to the owner of the store, which knows each value's address, type and
 * range. Results and rules are those of KvxComponent.h, with component type 0.
 *
 * `external` is true for callers from outside, who cannot write read-only parameters; the owner passes false. Setters
 * only read their text and data arguments. One thread at a time.
 */
class KVX_API KvxParamStorage {
public:
    /** Reserves memory for `capacity` parameters; more can be added. */
    explicit KvxParamStorage(unsigned int capacity);
    ~KvxParamStorage();
    KvxParamStorage(const KvxParamStorage&) = delete;
    KvxParamStorage& operator=(const KvxParamStorage&) = delete;

    /**
     * Registers a parameter and copies its description. The value is not changed.
     * @return 0; 0x80000007 unknown type, not readable, or a name that is empty, unterminated or taken; 0x80000008 null
     *         argument or value address; 0x80000009 out of memory
     */
    uint32_t AddParam(_KvxStParam* param) noexcept;
    /** @return 0; 0x80000007 no such index; 0x80000008 null argument. */
    uint32_t GetParamByIdx(unsigned int index, _KvxStParam* param) noexcept;
    uint32_t GetParamCount() noexcept;

    uint32_t GetParamInt(const char* name, long* value) noexcept;
    uint32_t GetParamBool(const char* name, bool* value) noexcept;
    uint32_t GetParamFloat(const char* name, double* value) noexcept;
    uint32_t GetParamString(const char* name, char* buffer, unsigned int* size) noexcept;
    uint32_t GetParamArray(const char* name, void* data, unsigned int* byteCount) noexcept;
    uint32_t GetParamAsString(const char* name, char* buffer, unsigned int* size, const char* format) noexcept;

    uint32_t SetParamInt(const char* name, long value, bool external) noexcept;
    uint32_t SetParamBool(const char* name, bool value, bool external) noexcept;
    uint32_t SetParamFloat(const char* name, double value, bool external) noexcept;
    uint32_t SetParamString(const char* name, char* text, bool external) noexcept;
    uint32_t SetParamArray(const char* name, void* data, unsigned int byteCount, bool external) noexcept;
    uint32_t SetParamAsString(const char* name, char* text, bool external) noexcept;

    uint32_t RunCommand(const char* name) noexcept;

private:
    std::vector<_KvxStParam> m_params;  // in order of registration
};
