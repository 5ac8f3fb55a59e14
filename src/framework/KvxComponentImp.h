/** The parameter interface of a component, over the parameter store. */
#pragma once

#include "KvxDemosaicing/KvxComponent.h"
#include "KvxMisc/KvxParamStorage.h"

namespace kvx {

/** Base of the components. They own the values of their parameters and register them in their constructors. */
class KvxComponentImp : public KvxComponent {
public:
    uint8_t GetComponentTypeID() noexcept override;
    uint32_t GetParamCount() noexcept override;
    uint32_t GetParamName(uint32_t index, char* buffer, uint32_t* size) noexcept override;
    uint32_t GetParamAsString(const char* name, char* buffer, uint32_t* size, const char* format) noexcept override;
    uint32_t SetParamAsString(const char* name, const char* text) noexcept override;
    uint32_t SetParamBool(const char* name, bool value) noexcept override;
    uint32_t SetParamInt(const char* name, int64_t value) noexcept override;
    uint32_t SetParamFloat(const char* name, double value) noexcept override;
    uint32_t SetParamString(const char* name, const char* text) noexcept override;
    uint32_t SetParamArray(const char* name, const void* data, uint32_t byteCount) noexcept override;
    uint32_t GetParamBool(const char* name, bool* value) noexcept override;
    uint32_t GetParamInt(const char* name, int64_t* value) noexcept override;
    uint32_t GetParamFloat(const char* name, double* value) noexcept override;
    uint32_t GetParamString(const char* name, char* buffer, uint32_t* size) noexcept override;
    uint32_t GetParamArray(const char* name, void* data, uint32_t* byteCount) noexcept override;
    uint32_t RunCommand(const char* name) noexcept override;

    uint32_t GetParamByIdx(uint32_t index, _KvxStParam* param) noexcept;

protected:
    explicit KvxComponentImp(uint8_t componentTypeID);

    /**
     * Writes `defaultValue` to `value` and registers it under `name`, readable and writable.
     * @throws std::bad_alloc when the store has no memory
     */
    void AddParam(const char* name, int64_t defaultValue, int64_t minValue, int64_t maxValue, int64_t* value);
    void AddParam(const char* name, double defaultValue, double minValue, double maxValue, double* value);

private:
    void Register(const char* name, uint32_t type, _KvxParamValue defaultValue, _KvxParamValue minValue,
                  _KvxParamValue maxValue, void* value);

    KvxParamStorage m_paramStorage;
    uint8_t m_componentTypeID;
};

}  // namespace kvx
