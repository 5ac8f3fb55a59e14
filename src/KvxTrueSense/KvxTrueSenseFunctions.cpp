// The exported functions of the TrueSense component.
#include <new>

#include "KvxTrueSense/KvxTrueSenseImp.h"

namespace {

constexpr uint32_t kInvalid = KvxResult_Of(KvxComponentType_TrueSense, KvxResult_InvalidArgument);

}  // namespace

KvxTrueSense* KvxTrueSense::CreateComponent() noexcept {
    try {
        return new kvx::KvxTrueSenseImp();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void KvxTrueSense::DeleteComponent(KvxTrueSense* component) noexcept {
    delete static_cast<kvx::KvxTrueSenseImp*>(component);
}

KvxTrueSense* KvxTrueSense_CreateComponent() noexcept {
    return KvxTrueSense::CreateComponent();
}

KvxComponent* KvxTrueSense_GetComponent(KvxTrueSense* component) noexcept {
    return component ? component->GetComponent() : nullptr;
}

uint32_t KvxTrueSense_AllocData(KvxTrueSense* component, const _KvxImage* src, _KvxImage* dst) noexcept {
    return component ? component->AllocData(src, dst) : kInvalid;
}

uint32_t KvxTrueSense_ConvertImage(KvxTrueSense* component, const _KvxImage* src, _KvxImage* dst) noexcept {
    return component ? component->ConvertImage(src, dst) : kInvalid;
}

uint32_t KvxTrueSense_GetParams(const KvxTrueSense* component, tagTrueSenseParam* params) noexcept {
    if (!component || !params) return kInvalid;
    *params = static_cast<const kvx::KvxTrueSenseImp*>(component)->Params();
    return KvxResult_Success;
}

uint32_t KvxTrueSense_ConvertImageWith(KvxTrueSense* component, const _KvxImage* src, _KvxImage* dst,
                                       const tagTrueSenseParam* params, int64_t algorithm) noexcept {
    if (!component || !params) return kInvalid;
    return static_cast<kvx::KvxTrueSenseImp*>(component)->ConvertImageWith(src, dst, *params, algorithm);
}

uint32_t KvxTrueSense_ConvertRows(KvxTrueSense* component, const _KvxImage* frame, int isBytes,
                                  const tagTrueSenseParam* params, int64_t algorithm, const KvxRowSource* source,
                                  const KvxPixelSink* sink) noexcept {
    if (!component || !frame || !params || !source || !sink) return kInvalid;
    return static_cast<kvx::KvxTrueSenseImp*>(component)->ConvertRows(*frame, isBytes != 0, *params, algorithm,
                                                                      {*source, *sink});
}

void KvxTrueSense_ReleaseData(KvxTrueSense* component) noexcept {
    if (component) component->ReleaseData();
}

void KvxTrueSense_DeleteComponent(KvxTrueSense* component) noexcept {
    KvxTrueSense::DeleteComponent(component);
}
