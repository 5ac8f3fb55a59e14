// The C form of the component interface.
#include "framework/KvxComponentImp.h"

namespace {

constexpr uint32_t kNull = KvxResult_Of(KvxComponentType_ParamStorage, KvxResult_NullPointer);

}  // namespace

uint8_t KvxComponent_GetComponentTypeID(KvxComponent* component) noexcept {
    return component ? component->GetComponentTypeID() : uint8_t{0};
}
uint32_t KvxComponent_GetParamCount(KvxComponent* component) noexcept {
    return component ? component->GetParamCount() : 0;
}
uint32_t KvxComponent_GetParamName(KvxComponent* component, uint32_t index, char* buffer, uint32_t* size) noexcept {
    return component ? component->GetParamName(index, buffer, size) : kNull;
}
uint32_t KvxComponent_GetParamAsString(KvxComponent* component, const char* name, char* buffer,
                                       uint32_t* size) noexcept {
    return component ? component->GetParamAsString(name, buffer, size, nullptr) : kNull;
}
uint32_t KvxComponent_SetParamAsString(KvxComponent* component, const char* name, const char* text) noexcept {
    return component ? component->SetParamAsString(name, text) : kNull;
}
uint32_t KvxComponent_GetParamBool(KvxComponent* component, const char* name, bool* value) noexcept {
    return component ? component->GetParamBool(name, value) : kNull;
}
uint32_t KvxComponent_SetParamBool(KvxComponent* component, const char* name, bool value) noexcept {
    return component ? component->SetParamBool(name, value) : kNull;
}
uint32_t KvxComponent_GetParamInt(KvxComponent* component, const char* name, int64_t* value) noexcept {
    return component ? component->GetParamInt(name, value) : kNull;
}
uint32_t KvxComponent_SetParamInt(KvxComponent* component, const char* name, int64_t value) noexcept {
    return component ? component->SetParamInt(name, value) : kNull;
}
uint32_t KvxComponent_GetParamFloat(KvxComponent* component, const char* name, double* value) noexcept {
    return component ? component->GetParamFloat(name, value) : kNull;
}
uint32_t KvxComponent_SetParamFloat(KvxComponent* component, const char* name, double value) noexcept {
    return component ? component->SetParamFloat(name, value) : kNull;
}

uint32_t KvxComponent_GetParamByIdx(KvxComponent* component, uint32_t index, _KvxStParam* param) noexcept {
    if (!component || !param) return kNull;
    auto* const ours = dynamic_cast<kvx::KvxComponentImp*>(component);
    return ours ? ours->GetParamByIdx(index, param)
                : KvxResult_Of(KvxComponentType_ParamStorage, KvxResult_InvalidArgument);
}
