// The exported functions of the Bayer component.
#include <new>

#include "KvxBayer/BayerFlat.h"
#include "KvxBayer/KvxBayerImp.h"
#include "framework/PixelFormats.h"

namespace {

constexpr uint32_t kInvalid = KvxResult_Of(KvxComponentType_Bayer, KvxResult_InvalidArgument);

// KvxBayer_ConvertImage() alone returns bare codes: deliberate, callers know them.
constexpr uint32_t kBareNullRecord = KvxResult_InvalidArgument;
constexpr uint32_t kBareDepthsDiffer = KvxResult_ConversionFailed;

/** The destination may be larger than the picture, unlike that of other conversions. */
uint32_t ConvertToBytes(const _KvxImage& src, const _KvxImage& dst, kvx::ChannelOrder order) {
    if (dst.width < src.width || dst.height < src.height) return kInvalid;
    const int depth = (src.pixelType & kvx::kStorageMask) == 0x0200 ? 10 : 12;
    // What is no Bayer format is read as GR: deliberate, too.
    const auto pattern = kvx::PatternOf(src.pixelType).value_or(kvx::BayerPattern::GR);
    // Slots of three bytes where the flat C1C4R functions have four: what lies beside the picture is not ours to clear.
    return kvx::BayerToShiftedBytes({src.data,
                                     {0, 0, src.width, src.height},
                                     {src.width, src.height},
                                     static_cast<int>(src.lineStep),
                                     depth,
                                     dst.data,
                                     static_cast<int>(dst.lineStep),
                                     static_cast<uint8_t>(pattern),
                                     KvxBayerAlgorithm_Bilinear},
                                    order, kvx::SlotBytes::AsWritten);
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
    if (!kvx::Is10Or12Bit(src->pixelType)) return kBareDepthsDiffer;
    switch (dst->pixelType) {
        case KvxFormat_RGB8:
            return ConvertToBytes(*src, *dst, kvx::ChannelOrder::RGB);
        case KvxFormat_BGR8:
            return ConvertToBytes(*src, *dst, kvx::ChannelOrder::BGR);
        default:
            return kBareDepthsDiffer;
    }
}

void KvxBayer_ReleaseData(KvxBayer* component) noexcept {
    if (component) component->ReleaseData();
}

void KvxBayer_DeleteComponent(KvxBayer* component) noexcept {
    KvxBayer::DeleteComponent(component);
}
