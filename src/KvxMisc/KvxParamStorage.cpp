#include "KvxMisc/KvxParamStorage.h"

#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstring>
#include <new>
#include <string_view>

namespace {

constexpr uint32_t Result(uint32_t code) {
    return KvxResult_Of(KvxComponentType_ParamStorage, code);
}

const _KvxStParam* FindByName(const std::vector<_KvxStParam>& params, const char* name) {
    for (const _KvxStParam& param : params)
        if (std::strcmp(param.name, name) == 0) return &param;
    return nullptr;
}

/** Sets `param` to the parameter called `name`. @return 0, or why there is none */
uint32_t Find(const std::vector<_KvxStParam>& params, const char* name, const _KvxStParam** param) {
    if (!name) return Result(KvxResult_NullPointer);
    *param = FindByName(params, name);
    return Result(*param ? KvxResult_Success : KvxResult_UnknownName);
}

uint32_t FindTyped(const std::vector<_KvxStParam>& params, const char* name, uint32_t type, const _KvxStParam** param) {
    const uint32_t result = Find(params, name, param);
    if (result != KvxResult_Success) return result;
    return Result((*param)->type == type ? KvxResult_Success : KvxResult_WrongType);
}

/** For the accessors of kinds that no parameter has. */
uint32_t RefuseKind(const std::vector<_KvxStParam>& params, const char* name) {
    const _KvxStParam* param = nullptr;
    const uint32_t result = Find(params, name, &param);
    return result != KvxResult_Success ? result : Result(KvxResult_WrongType);
}

bool IsFlag(const _KvxStParam& param) {
    return param.type == KvxParamType_Int && param.minValue.asInt == 0 && param.maxValue.asInt == 1;
}

bool Accepts(const _KvxStParam& param, long value) {
    return value >= param.minValue.asInt && value <= param.maxValue.asInt;
}

bool Accepts(const _KvxStParam& param, double value) {
    // Tables declare DBL_MIN where they mean "the lowest double", and negative values are in use.
    const bool hasLowerBound = param.minValue.asFloat != DBL_MIN;
    return std::isfinite(value) && (!hasLowerBound || value >= param.minValue.asFloat) &&
           value <= param.maxValue.asFloat;
}

template <class T>
uint32_t Store(const _KvxStParam& param, T value, bool external) {
    if (external && !(param.flags & KvxParamAccess_Write)) return Result(KvxResult_ReadOnly);
    if (!Accepts(param, value)) return Result(KvxResult_OutOfRange);
    *static_cast<T*>(param.value) = value;
    return KvxResult_Success;
}

template <class T>
uint32_t ParseAndStore(const _KvxStParam& param, std::string_view text, bool external) {
    T value{};
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    if (error == std::errc::result_out_of_range) return Result(KvxResult_OutOfRange);
    if (error != std::errc() || rest != end) return Result(KvxResult_WrongType);
    return Store(param, value, external);
}

uint32_t WriteText(std::string_view text, char* buffer, unsigned int* size) {
    const auto needed = static_cast<unsigned int>(text.size() + 1);
    if (needed > *size) {
        *size = needed;
        return Result(KvxResult_BufferTooSmall);
    }
    if (!buffer) return Result(KvxResult_NullPointer);
    std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
    return KvxResult_Success;
}

template <class T>
T Load(const _KvxStParam& param) {
    return *static_cast<const T*>(param.value);
}

}  // namespace

KvxParamStorage::KvxParamStorage(unsigned int capacity) {
    m_params.reserve(capacity);
}

KvxParamStorage::~KvxParamStorage() = default;

uint32_t KvxParamStorage::AddParam(_KvxStParam* param) noexcept {
    if (!param || !param->value) return Result(KvxResult_NullPointer);
    const bool named = param->name[0] && std::memchr(param->name, '\0', sizeof param->name);
    const bool typed = param->type == KvxParamType_Int || param->type == KvxParamType_Float;
    const bool readable = param->flags & KvxParamAccess_Read;
    if (!named || !typed || !readable || FindByName(m_params, param->name)) return Result(KvxResult_InvalidArgument);
    try {
        m_params.push_back(*param);
    } catch (const std::bad_alloc&) {
        return Result(KvxResult_NoMemory);
    }
    return KvxResult_Success;
}

uint32_t KvxParamStorage::GetParamByIdx(unsigned int index, _KvxStParam* param) noexcept {
    if (!param) return Result(KvxResult_NullPointer);
    if (index >= m_params.size()) return Result(KvxResult_InvalidArgument);
    *param = m_params[index];
    return KvxResult_Success;
}

uint32_t KvxParamStorage::GetParamCount() noexcept {
    return static_cast<uint32_t>(m_params.size());
}

uint32_t KvxParamStorage::GetParamInt(const char* name, long* value) noexcept {
    if (!value) return Result(KvxResult_NullPointer);
    const _KvxStParam* param = nullptr;
    const uint32_t result = FindTyped(m_params, name, KvxParamType_Int, &param);
    if (result == KvxResult_Success) *value = Load<long>(*param);
    return result;
}

uint32_t KvxParamStorage::GetParamBool(const char* name, bool* value) noexcept {
    if (!value) return Result(KvxResult_NullPointer);
    const _KvxStParam* param = nullptr;
    const uint32_t result = FindTyped(m_params, name, KvxParamType_Int, &param);
    if (result != KvxResult_Success) return result;
    if (!IsFlag(*param)) return Result(KvxResult_WrongType);
    *value = Load<long>(*param) != 0;
    return KvxResult_Success;
}

uint32_t KvxParamStorage::GetParamFloat(const char* name, double* value) noexcept {
    if (!value) return Result(KvxResult_NullPointer);
    const _KvxStParam* param = nullptr;
    const uint32_t result = FindTyped(m_params, name, KvxParamType_Float, &param);
    if (result == KvxResult_Success) *value = Load<double>(*param);
    return result;
}

uint32_t KvxParamStorage::GetParamString(const char* name, char* buffer, unsigned int* size) noexcept {
    if (!buffer || !size) return Result(KvxResult_NullPointer);
    return RefuseKind(m_params, name);
}

uint32_t KvxParamStorage::GetParamArray(const char* name, void* data, unsigned int* byteCount) noexcept {
    if (!data || !byteCount) return Result(KvxResult_NullPointer);
    return RefuseKind(m_params, name);
}

uint32_t KvxParamStorage::GetParamAsString(const char* name, char* buffer, unsigned int* size,
                                           const char* /*format*/) noexcept {
    if (!size) return Result(KvxResult_NullPointer);
    const _KvxStParam* param = nullptr;
    const uint32_t result = Find(m_params, name, &param);
    if (result != KvxResult_Success) return result;
    char text[32];  // the longest: 20 characters of an integer, 24 of a double
    const auto written = param->type == KvxParamType_Int
                             ? std::to_chars(text, text + sizeof text, Load<long>(*param))
                             : std::to_chars(text, text + sizeof text, Load<double>(*param));
    return WriteText({text, static_cast<size_t>(written.ptr - text)}, buffer, size);
}

uint32_t KvxParamStorage::SetParamInt(const char* name, long value, bool external) noexcept {
    const _KvxStParam* param = nullptr;
    const uint32_t result = FindTyped(m_params, name, KvxParamType_Int, &param);
    return result != KvxResult_Success ? result : Store(*param, value, external);
}

uint32_t KvxParamStorage::SetParamBool(const char* name, bool value, bool external) noexcept {
    const _KvxStParam* param = nullptr;
    const uint32_t result = FindTyped(m_params, name, KvxParamType_Int, &param);
    if (result != KvxResult_Success) return result;
    return IsFlag(*param) ? Store(*param, static_cast<long>(value), external) : Result(KvxResult_WrongType);
}

uint32_t KvxParamStorage::SetParamFloat(const char* name, double value, bool external) noexcept {
    const _KvxStParam* param = nullptr;
    const uint32_t result = FindTyped(m_params, name, KvxParamType_Float, &param);
    return result != KvxResult_Success ? result : Store(*param, value, external);
}

uint32_t KvxParamStorage::SetParamString(const char* name, char* text, bool /*external*/) noexcept {
    return text ? RefuseKind(m_params, name) : Result(KvxResult_NullPointer);
}

uint32_t KvxParamStorage::SetParamArray(const char* name, void* data, unsigned int /*byteCount*/,
                                        bool /*external*/) noexcept {
    return data ? RefuseKind(m_params, name) : Result(KvxResult_NullPointer);
}

uint32_t KvxParamStorage::SetParamAsString(const char* name, char* text, bool external) noexcept {
    if (!text) return Result(KvxResult_NullPointer);
    const _KvxStParam* param = nullptr;
    const uint32_t result = Find(m_params, name, &param);
    if (result != KvxResult_Success) return result;
    return param->type == KvxParamType_Int ? ParseAndStore<long>(*param, text, external)
                                           : ParseAndStore<double>(*param, text, external);
}

uint32_t KvxParamStorage::RunCommand(const char* name) noexcept {
    return RefuseKind(m_params, name);
}
