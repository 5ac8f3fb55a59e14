// The exported functions of the Bayer component.
#include <new>

#include "KvxBayer/BayerFlat.h"
#include "KvxBayer/KvxBayerImp.h"
#include "framework/PixelFormats.h"

namespace {

constexpr uint32_t kInvalid = KvxResult_Of(KvxComponentType_Bayer, KvxResult_InvalidArgument);

// Only KvxBayer_ConvertImage() returns bare codes: deliberate, callers know them.
constexpr uint32_t kBareNullRecord = KvxResult_InvalidArgument;
constexpr uint32_t kBareDepthsDiffer = KvxResult_ConversionFailed;

/** Bilinear, into a destination of which only data and line step count. */
uint32_t ConvertToBytes(const _KvxImage& src, const _KvxImage& dst) {
    // A source that is not Bayer is read as GR: deliberate, too.
    kvx::BayerJob job = kvx::BayerJobOf(src, dst, kvx::PatternOf(src.pixelType).value_or(kvx::BayerPattern::GR));
    job.destinationSize = job.size;
    job.output = {.form = kvx::BayerOutput::ShiftedBytes, .shift = kvx::BitsOf(src.pixelType) - 8};
    return kvx::ConvertBayerFlat(job, KvxBayerAlgorithm_Bilinear);
}

}  // namespace

KvxBayer* KvxBayer::CreateComponent() noexcept {
    try {
        return new kvx::KvxBayerImp();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void KvxBayer::DeleteComponent(KvxBayer* component) noexcept {
    delete static_cast<kvx::KvxBayerImp*>(component);
}

KvxBayer* KvxBayer_CreateComponent() noexcept {
    return KvxBayer::CreateComponent();
}

KvxComponent* KvxBayer_GetComponent(KvxBayer* component) noexcept {
    return component ? component->GetComponent() : nullptr;
}

uint32_t KvxBayer_AllocData(KvxBayer* component, const _KvxImage* src, _KvxImage* dst) noexcept {
    return component ? component->AllocData(src, dst) : kInvalid;
}

uint32_t KvxBayer_ConvertImage(KvxBayer* component, const _KvxImage* src, _KvxImage* dst) noexcept {
    if (!component) return kInvalid;
    if (!src || !dst) return kBareNullRecord;
    if ((src->pixelType & kvx::kStorageMask) == (dst->pixelType & kvx::kStorageMask))
        return component->ConvertImage(src, dst);
    const bool toBytes = dst->pixelType == KvxFormat_RGB8 || dst->pixelType == KvxFormat_BGR8;
    return kvx::Is10Or12Bit(src->pixelType) && toBytes ? ConvertToBytes(*src, *dst) : kBareDepthsDiffer;
}

uint32_t KvxBayer_ConvertRows(KvxBayer* component, const _KvxImage* frame, const KvxRowSource* source,
                              const KvxPixelSink* sink) noexcept {
    if (!component || !frame || !source || !sink) return kInvalid;
    return static_cast<kvx::KvxBayerImp*>(component)->ConvertRows(*frame, {*source, *sink});
}

void KvxBayer_ReleaseData(KvxBayer* component) noexcept {
    if (component) component->ReleaseData();
}

void KvxBayer_DeleteComponent(KvxBayer* component) noexcept {
    KvxBayer::DeleteComponent(component);
}
