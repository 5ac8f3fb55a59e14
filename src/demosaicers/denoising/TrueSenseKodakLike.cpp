#include "demosaicers/denoising/TrueSenseKodakLike.h"

#include <new>

#include "pipeline/NoiseThresholds.h"
#include "pipeline/ToneScales.h"

namespace kvx {
namespace {

constexpr int kPasses = 3, kPanStep = 1, kColourStep = 2;

FinishSettings FinishSettingsOf(const TrueSenseFrame& frame, const ImageProcessParam& param) {
    FinishSettings settings{};
    settings.isDeep = frame.destination.sampleSize == sizeof(uint16_t);
    if (!settings.isDeep)
        settings.tone = ByteToneOf(frame.params.toneTable);
    else if (!frame.params.toneTable)
        settings.tone = Tonescale12Table12;
    else
        std::transform(frame.params.toneTable, frame.params.toneTable + KVX_TONE_TABLE_SIZE, settings.tone.begin(),
                       [](uint16_t value) { return std::min<uint16_t>(value, KVX_TONE_TABLE_SIZE - 1); });
    for (int code = 0; code < kGammaCodes; ++code) settings.display[code] = settings.tone[Gamma10toLinear12[code]];
    std::copy(std::begin(param.colorMatrix), std::end(param.colorMatrix), settings.matrix.begin());
    const float* sharpness = param.sharpness;
    settings.sharpness = SharpnessTablesOf(sharpness[0], sharpness[2], sharpness[3]);
    settings.maxSharpen = sharpness[1];
    settings.isSharpened = sharpness[1] != 0;
    settings.hasDetail = settings.isSharpened || sharpness[2] != 0 || sharpness[3] != 0;
    settings.isMono = param.monoEnable == 1;
    return settings;
}

bool IsNothing(const ThresholdTable& table) {
    return std::all_of(table.begin(), table.end(), [](int32_t threshold) { return threshold <= 0; });
}

}  // namespace

template <class T>
void TrueSenseKodakLike<T>::CleanMemory() noexcept {
    DenoisingDemosaicer<T>::CleanMemory();
    m_finishers.reset();
    m_codes.Release();
    m_thresholds.Release();
}

template <class T>
int TrueSenseKodakLike<T>::Reserve() noexcept {
    const int result = DenoisingDemosaicer<T>::Reserve();
    if (result == KvxResult_Success) m_settings = FinishSettingsOf(this->Frame(), this->Param());
    return result;
}

template <class T>
bool TrueSenseKodakLike<T>::ReserveThreads(int threads, int width) noexcept {
    m_finishers.reset(new (std::nothrow) BandFinisher[threads]);
    bool reserved =
        m_finishers && m_codes.Reserve(width / 2, threads, 0, 0) && m_thresholds.Reserve(width / 2, threads, 0, 0);
    for (int thread = 0; thread < threads; ++thread) reserved = reserved && m_finishers[thread].Reserve(width);
    return reserved;
}

template <class T>
int TrueSenseKodakLike<T>::Convert() noexcept {
    const TrueSenseFrame& frame = this->Frame();
    const PipelinePlanes& planes = this->Planes();
    this->MakeLowPlanes();
    const LowPlanes low = {CleanLowPan(), CleanLowColorDiff(), planes.Cells(), planes.CellRows()};
    const int begin = frame.area.region.row;
    this->ForBands(begin, begin + frame.area.region.height, this->BandRows(), [&](int thread, int first, int last) {
        m_finishers[thread].Finish(frame, planes, low, m_settings, first, last);
    });
    return KvxResult_Success;
}

template <class T>
ThresholdTable TrueSenseKodakLike<T>::ColorBuildGammaNoiseThreshold(int pass) const noexcept {
    const ImageProcessParam& param = this->Param();
    float slope = 0, intercept = 0;
    Alg_CalculateNoiseParameter(param.analogGain, param.ISOAnalogGain, param.ISOColorSlope, param.ISOColorIntercept,
                                &slope, &intercept, nullptr);
    const float gain = LowColourGain(param.globalGain, param.redBalance, param.greenBalance, param.blueBalance);
    return ThresholdsOf(param.colorSigma[pass], LowColourNoise(slope, intercept, gain));
}

template <class T>
ThresholdTable TrueSenseKodakLike<T>::PanBuildGammaNoiseThreshold(int pass) const noexcept {
    const ImageProcessParam& param = this->Param();
    float slope = 0, intercept = 0;
    Alg_CalculateNoiseParameter(param.analogGain, param.ISOAnalogGain, param.ISOPanSlope, param.ISOPanIntercept, &slope,
                                &intercept, nullptr);
    return ThresholdsOf(param.panSigma[pass], LowPanNoise(slope, intercept, param.globalGain));
}

/** @param levels the brightness at each value: the plane itself, or the colours of the differences */
template <class T>
template <class Level>
void TrueSenseKodakLike<T>::IterativeSigmaFilter(const PaddedPlane<int32_t>& from, const PaddedPlane<Level>& levels,
                                                 int radius, int step, const ThresholdTable& table,
                                                 const PaddedPlane<int32_t>& to) noexcept {
    const int rows = this->Planes().CellRows();
    const auto cells = static_cast<size_t>(this->Planes().Cells()), wideStep = static_cast<size_t>(step);
    const SigmaPass pass{std::min(radius, kLargestSigmaRadius), wideStep, from.Step()};
    this->ForBands(0, rows, (this->BandRows() + 1) / 2, [&](int thread, int begin, int end) {
        int16_t* codes = m_codes.Row(thread);
        int32_t* thresholds = m_thresholds.Row(thread);
        for (int row = begin; row < end; ++row) {
            const bool isBorder = row < step || row >= rows - step;
            LocalCodes(levels.Row(row), isBorder ? 0 : step * levels.Step(), wideStep, cells, codes);
            for (size_t k = 0; k < cells; ++k) thresholds[k] = table[codes[k]];
            FilterSigma(from.Row(row), pass, isBorder, thresholds, cells, to.Row(row));
        }
    });
}

template <class T>
const PaddedPlane<int32_t>* TrueSenseKodakLike<T>::CleanLowColorDiff() noexcept {
    const auto& planes = this->Planes();
    const PaddedPlane<int32_t>*from = &planes.lowColorDiff[0], *to = &planes.lowColorDiff[1];
    for (int pass = 0; pass < kPasses; ++pass) {
        if (this->Param().colorRadius[pass] < 1) continue;
        const ThresholdTable table = ColorBuildGammaNoiseThreshold(pass);
        if (IsNothing(table)) continue;
        IterativeSigmaFilter(*from, planes.lowColour, this->Param().colorRadius[pass], kColourStep, table, *to);
        std::swap(from, to);
    }
    return from;
}

template <class T>
const PaddedPlane<int32_t>* TrueSenseKodakLike<T>::CleanLowPan() noexcept {
    const auto& planes = this->Planes();
    const PaddedPlane<int32_t>*from = &planes.lowPan[0], *to = &planes.lowPan[1];
    for (int pass = 0; pass < kPasses; ++pass) {
        if (this->Param().panRadius[pass] < 1) continue;
        const ThresholdTable table = PanBuildGammaNoiseThreshold(pass);
        if (IsNothing(table)) continue;
        IterativeSigmaFilter(*from, *from, this->Param().panRadius[pass], kPanStep, table, *to);
        std::swap(from, to);
    }
    return from;
}

template class TrueSenseKodakLike<unsigned char>;
template class TrueSenseKodakLike<unsigned short>;

}  // namespace kvx
