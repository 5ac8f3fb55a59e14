#include "KvxTrueSense/KvxTrueSenseImp.h"

#include <climits>
#include <new>

#include "KvxTrueSense/DemosaicerClasses.h"
#include "KvxTrueSense/TrueSenseParams.h"
#include "framework/PixelFormats.h"

namespace kvx {
namespace {

constexpr uint32_t Result(uint32_t code) {
    return KvxResult_Of(KvxComponentType_TrueSense, code);
}

bool IsTrueSense(uint32_t pixelType) {
    return PixelTypeToTruesenseGrid(pixelType) != -1;
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
uint32_t KvxTrueSenseImp::Select(std::unique_ptr<IDemConvertion<T>>& demosaicer) noexcept {
    const DemosaicerClass<T>* selected = DemosaicerClassOf<T>(m_trueSenseAlgType);
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
    return Result(Is8Bit(src->pixelType) ? Select(m_demosaicer8) : Select(m_demosaicer16));
}

uint32_t KvxTrueSenseImp::ConvertImage(const _KvxImage* src, _KvxImage* dst) noexcept {
    if (!src || !dst || !IsTrueSense(src->pixelType)) return Result(KvxResult_InvalidArgument);
    const bool bytes = Is8Bit(src->pixelType);
    if (bytes)
        m_demosaicer16.reset();
    else
        m_demosaicer8.reset();
    const uint32_t selected = bytes ? Select(m_demosaicer8) : Select(m_demosaicer16);
    if (selected != KvxResult_Success) return Result(selected);
    const std::optional<TrueSenseOutput> output = TrueSenseOutputOf(src->pixelType, dst->pixelType);
    // As an int such a step would be negative, which has a meaning of its own to a demosaicer.
    if (!output || src->lineStep > INT_MAX || dst->lineStep > INT_MAX) return Result(KvxResult_InvalidArgument);
    if (!bytes) return Result(Convert(*m_demosaicer16, *src, *dst, *output));

    const int64_t normalization = m_params.normalizationEnable;
    m_params.normalizationEnable = 0;  // bytes are never deepened
    const uint32_t result = Convert(*m_demosaicer8, *src, *dst, *output);
    m_params.normalizationEnable = normalization;
    return Result(result);
}

template <class T>
uint32_t KvxTrueSenseImp::Convert(IDemConvertion<T>& demosaicer, const _KvxImage& src, const _KvxImage& dst,
                                  const TrueSenseOutput& output) noexcept {
    const _KvxRect region{0, 0, src.width, src.height};
    const _KvxSize size{src.width, src.height};
    const int srcStep = static_cast<int>(src.lineStep), dstStep = static_cast<int>(dst.lineStep);
    const int depth = static_cast<int>(src.pixelDepth);
    const auto grid = static_cast<unsigned char>(PixelTypeToTruesenseGrid(src.pixelType));
    demosaicer.SetOutputPixelType(output.withAlpha, output.bgrOrder);
    int result = 0;
    if (output.toBytes) {
        result = demosaicer.InitRGB(static_cast<const unsigned short*>(src.data), region, size, srcStep, depth,
                                    static_cast<unsigned char*>(dst.data), dstStep, grid, &m_params);
        if (result == KvxResult_Success) result = demosaicer.CalculateRGB();
    } else {
        result = demosaicer.Init(static_cast<const T*>(src.data), region, size, srcStep, depth,
                                 static_cast<T*>(dst.data), dstStep, grid, &m_params);
        if (result == KvxResult_Success) result = demosaicer.Calculate();
    }
    return static_cast<uint32_t>(result);
}

}  // namespace kvx
