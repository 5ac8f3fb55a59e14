#include "framework/KvxComponentImp.h"

#include <cstring>
#include <new>
#include <type_traits>

namespace kvx {

static_assert(std::is_same_v<int64_t, long>, "the store's integers are the interface's");

KvxComponentImp::KvxComponentImp(uint8_t componentTypeID) : m_paramStorage(0), m_componentTypeID(componentTypeID) {}

void KvxComponentImp::AddParam(const char* name, int64_t defaultValue, int64_t minValue, int64_t maxValue,
                               int64_t* value) {
    *value = defaultValue;
    Register(name, KvxParamType_Int, {.asInt = defaultValue}, {.asInt = minValue}, {.asInt = maxValue}, value);
}

void KvxComponentImp::AddParam(const char* name, double defaultValue, double minValue, double maxValue, double* value) {
    *value = defaultValue;
    Register(name, KvxParamType_Float, {.asFloat = defaultValue}, {.asFloat = minValue}, {.asFloat = maxValue}, value);
}

void KvxComponentImp::Register(const char* name, uint32_t type, _KvxParamValue defaultValue, _KvxParamValue minValue,
                               _KvxParamValue maxValue, void* value) {
    _KvxStParam param{};
    param.type = type;
    param.flags = KvxParamAccess_Read | KvxParamAccess_Write;
    std::strncpy(param.name, name, sizeof param.name - 1);
    param.defaultValue = defaultValue;
    param.minValue = minValue;
    param.maxValue = maxValue;
    param.value = value;
    if (KvxResult_Failed(m_paramStorage.AddParam(&param))) throw std::bad_alloc();
}

uint8_t KvxComponentImp::GetComponentTypeID() noexcept {
    return m_componentTypeID;
}

uint32_t KvxComponentImp::GetParamCount() noexcept {
    return m_paramStorage.GetParamCount();
}

uint32_t KvxComponentImp::GetParamName(uint32_t index, char* buffer, uint32_t* size) noexcept {
    if (!size) return KvxResult_Of(GetComponentTypeID(), KvxResult_NullPointer);
    _KvxStParam param{};
    m_paramStorage.GetParamByIdx(index, &param);  // result ignored: deliberate, an unknown index has an empty name
    const auto needed = static_cast<uint32_t>(std::strlen(param.name) + 1);
    if (needed > *size) {
        *size = needed;
        return KvxResult_Of(GetComponentTypeID(), KvxResult_BufferTooSmall);
    }
    if (!buffer) return KvxResult_Of(GetComponentTypeID(), KvxResult_NullPointer);
    std::strncpy(buffer, param.name, *size);
    return KvxResult_Success;
}

uint32_t KvxComponentImp::GetParamByIdx(uint32_t index, _KvxStParam* param) noexcept {
    return m_paramStorage.GetParamByIdx(index, param);
}

// The store takes writable text and data by its interface, and only reads them: hence the const_casts below.

uint32_t KvxComponentImp::GetParamAsString(const char* name, char* buffer, uint32_t* size,
                                           const char* format) noexcept {
    return m_paramStorage.GetParamAsString(name, buffer, size, format);
}
uint32_t KvxComponentImp::SetParamAsString(const char* name, const char* text) noexcept {
    return m_paramStorage.SetParamAsString(name, const_cast<char*>(text), true);
}
uint32_t KvxComponentImp::SetParamBool(const char* name, bool value) noexcept {
    return m_paramStorage.SetParamBool(name, value, true);
}
uint32_t KvxComponentImp::SetParamInt(const char* name, int64_t value) noexcept {
    return m_paramStorage.SetParamInt(name, value, true);
}
uint32_t KvxComponentImp::SetParamFloat(const char* name, double value) noexcept {
    return m_paramStorage.SetParamFloat(name, value, true);
}
uint32_t KvxComponentImp::SetParamString(const char* name, const char* text) noexcept {
    return m_paramStorage.SetParamString(name, const_cast<char*>(text), true);
}
uint32_t KvxComponentImp::SetParamArray(const char* name, const void* data, uint32_t byteCount) noexcept {
    return m_paramStorage.SetParamArray(name, const_cast<void*>(data), byteCount, true);
}
uint32_t KvxComponentImp::GetParamBool(const char* name, bool* value) noexcept {
    return m_paramStorage.GetParamBool(name, value);
}
uint32_t KvxComponentImp::GetParamInt(const char* name, int64_t* value) noexcept {
    return m_paramStorage.GetParamInt(name, value);
}
uint32_t KvxComponentImp::GetParamFloat(const char* name, double* value) noexcept {
    return m_paramStorage.GetParamFloat(name, value);
}
uint32_t KvxComponentImp::GetParamString(const char* name, char* buffer, uint32_t* size) noexcept {
    return m_paramStorage.GetParamString(name, buffer, size);
}
uint32_t KvxComponentImp::GetParamArray(const char* name, void* data, uint32_t* byteCount) noexcept {
    return m_paramStorage.GetParamArray(name, data, byteCount);
}
uint32_t KvxComponentImp::RunCommand(const char* name) noexcept {
    return m_paramStorage.RunCommand(name);
}

}  // namespace kvx
