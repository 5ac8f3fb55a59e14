#include "KvxTrueSense/KvxTrueSenseImp.h"

#include <new>
#include <optional>

#include "KvxTrueSense/DemosaicerClasses.h"
#include "KvxTrueSense/TrueSenseOutput.h"
#include "KvxTrueSense/TrueSenseParams.h"
#include "framework/PixelFormats.h"

namespace kvx {
namespace {

constexpr uint32_t Result(uint32_t code) {
    return KvxResult_Of(KvxComponentType_TrueSense, code);
}

}  // namespace

KvxTrueSenseImp::KvxTrueSenseImp() : KvxComponentImp(KvxComponentType_TrueSense), m_params(DefaultTrueSenseParams()) {
    AddParam("TrueSenseAlgType", 0, 0, 6, &m_trueSenseAlgType);
    AddParam("NoRealloc", 0, 0, 1, &m_noRealloc);
    for (const TrueSenseParamRow& row : s_trueSenseParams) {
        if (row.integer)
            AddParam(row.name, row.componentDefault.asInt, row.minimum.asInt, row.maximum.asInt,
                     &(m_params.*row.integer));
        else
            AddParam(row.name, row.componentDefault.asFloat, row.minimum.asFloat, row.maximum.asFloat,
                     &(m_params.*row.real));
    }
}

KvxTrueSenseImp::~KvxTrueSenseImp() = default;

KvxComponent* KvxTrueSenseImp::GetComponent() noexcept {
    return this;
}

void KvxTrueSenseImp::ReleaseData() noexcept {
    m_demosaicer8.reset();
    m_demosaicer16.reset();
}

/** Keeps `demosaicer` when it is of the selected class, and replaces it otherwise. */
template <class T>
uint32_t KvxTrueSenseImp::Select(std::unique_ptr<TrueSenseDemosaicer<T>>& demosaicer, int64_t algorithm) noexcept {
    const DemosaicerClass<T>* selected = DemosaicerClassOf<T>(algorithm);
    if (!selected) return KvxResult_InvalidArgument;
    if (demosaicer && selected->made(demosaicer.get())) return KvxResult_Success;
    demosaicer.reset();
    try {
        demosaicer = selected->make();
    } catch (const std::bad_alloc&) {
        return KvxResult_NoMemory;
    }
    return KvxResult_Success;
}

uint32_t KvxTrueSenseImp::AllocData(const _KvxImage* src, _KvxImage* dst) noexcept {
    if (!src || !dst || (src->pixelType & kColourModelMask) != kTrueSense) return Result(KvxResult_InvalidArgument);
    ReleaseData();
    if (!IsTrueSense(src->pixelType)) return Result(KvxResult_InvalidArgument);
    return Result(Is8Bit(src->pixelType) ? Select(m_demosaicer8, m_trueSenseAlgType)
                                         : Select(m_demosaicer16, m_trueSenseAlgType));
}

uint32_t KvxTrueSenseImp::ConvertImage(const _KvxImage* src, _KvxImage* dst) noexcept {
    return ConvertImageWith(src, dst, m_params, m_trueSenseAlgType);
}

uint32_t KvxTrueSenseImp::ConvertImageWith(const _KvxImage* src, _KvxImage* dst, const tagTrueSenseParam& params,
                                           int64_t algorithm) noexcept {
    if (!src || !dst || !IsTrueSense(src->pixelType)) return Result(KvxResult_InvalidArgument);
    const bool fromBytes = Is8Bit(src->pixelType);
    if (fromBytes)
        m_demosaicer16.reset();
    else
        m_demosaicer8.reset();
    const uint32_t selected = fromBytes ? Select(m_demosaicer8, algorithm) : Select(m_demosaicer16, algorithm);
    if (selected != KvxResult_Success) return Result(selected);
    const std::optional<TrueSenseOutput> output = TrueSenseOutputOf(*src, *dst);
    if (!output) return Result(KvxResult_InvalidArgument);

    tagTrueSenseParam own = params;
    if (fromBytes) own.normalizationEnable = 0;  // bytes are never deepened
    const TrueSenseCall call = CallOf(*src, *dst, *output, &own);
    const int result = fromBytes ? m_demosaicer8->Run(call, output->layout) : m_demosaicer16->Run(call, output->layout);
    return Result(static_cast<uint32_t>(result));
}

uint32_t KvxTrueSenseImp::ConvertRows(const _KvxImage& frame, bool isBytes, const tagTrueSenseParam& params,
                                      int64_t algorithm, const RowExchange& exchange) noexcept {
    if (!IsTrueSense(frame.pixelType)) return Result(KvxResult_InvalidArgument);
    m_demosaicer8.reset();
    const uint32_t selected = Select(m_demosaicer16, algorithm);
    if (selected != KvxResult_Success) return Result(selected);
    tagTrueSenseParam own = params;
    if (Is8Bit(frame.pixelType)) own.normalizationEnable = 0;  // as above
    const TrueSenseCall call = CallOf(frame, isBytes, exchange, &own);
    return Result(static_cast<uint32_t>(m_demosaicer16->Run(call, {})));
}

}  // namespace kvx
