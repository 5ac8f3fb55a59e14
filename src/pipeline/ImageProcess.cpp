#include <climits>
#include <cstring>

#include "pipeline/PanInterpolation.h"
#include "pipeline/PanNoise.h"
#include "pipeline/RawSamples.h"
#include "pipeline/ScratchArena.h"
#include "pipeline/ToneScales.h"

namespace kvx {
namespace {

constexpr uint32_t kHashSeed = 0x866;
constexpr int32_t kCellPixels = 4;  // pixels per low-resolution value

/** One frame on its way through the stages. */
class Pipeline {
public:
    Pipeline(ImageProcessParam& param, const ImageProcessMemory& memory, LogText_t& log)
        : m_param(param),
          m_memory(memory),
          m_log(&log),
          m_count(int64_t{param.width} * param.height),
          m_w2(param.width / 2),
          m_h2(param.height / 2),
          m_lowCount(int64_t{m_w2} * m_h2) {}

    int32_t Run() {
        using Stage = int32_t (Pipeline::*)();
        constexpr Stage stages[] = {
            &Pipeline::PrepareRaw,    &Pipeline::WhiteBalance, &Pipeline::InterpolatePan,    &Pipeline::GenerateLow,
            &Pipeline::CleanLowColor, &Pipeline::CleanLowPan,  &Pipeline::UpSampleColorDiff, &Pipeline::UpSamplePan,
            &Pipeline::RemoveColor,   &Pipeline::CorrectColor, &Pipeline::Sharpen,           &Pipeline::WriteOutput,
        };
        for (const Stage stage : stages)
            if ((this->*stage)() != kStageSuccess) return kStageFailure;
        return kStageSuccess;
    }

private:
    // The regions of the work buffer.
    uint16_t* Raw() const {
        return static_cast<uint16_t*>(m_memory.work);
    }
    uint16_t* Quarter(int index) const {
        return Raw() + m_count + index * m_lowCount;
    }
    int32_t* FullLowPan() const {
        return static_cast<int32_t*>(m_memory.work) + m_lowCount;
    }
    // The regions of the staging buffer.
    uint8_t* Result() const {
        return static_cast<uint8_t*>(m_memory.staging);
    }
    int32_t* LowColorDiff() const {
        return reinterpret_cast<int32_t*>(Result() + 3 * m_count);
    }
    int32_t* LowPan() const {
        return static_cast<int32_t*>(m_memory.lowPan);
    }
    int32_t* Full(int index) const {
        return static_cast<int32_t*>(index == 0 ? m_memory.full0 : index == 1 ? m_memory.full1 : m_memory.full2);
    }
    uint16_t* Pan() const {
        return static_cast<uint16_t*>(m_memory.pan);
    }

    void UseFullPlanesAsScratch() const {
        Alg_SetScratch(Full(0), Full(0) + m_count, Full(1), Full(2));
    }
    void UseStagingAsScratch() const {
        Alg_SetScratch(Result(), Result() + 3 * m_count + 4 * m_lowCount, FullLowPan(), nullptr);
    }
    static bool IsAnyPass(const int32_t (&radii)[3]) {
        return radii[0] != 0 || radii[1] != 0 || radii[2] != 0;
    }

    int32_t PrepareRaw() {
        for (int64_t i = 0; i < m_count; ++i) {
            int32_t sample = SubtractedFloor(m_param.input[i], m_param.darkFloor);
            if (m_param.globalGain > 1.0F) sample = Gained(sample, m_param.globalGain);
            Raw()[i] = static_cast<uint16_t>(sample);
        }
        return kStageSuccess;
    }
    int32_t WhiteBalance() {
        return Alg_WhiteBalance(Raw(), m_param.width, m_param.height, m_param.cfaPattern, m_param.redBalance,
                                m_param.greenBalance, m_param.blueBalance, m_param.panBalance, Quarter(0), Quarter(1),
                                Quarter(2), Quarter(3), m_log);
    }
    int32_t InterpolatePan() {
        UseFullPlanesAsScratch();
        return kvx::InterpolatePan(Quarter(0), Quarter(1), m_param.width, m_param.height, ReducesNoise(m_param), Pan(),
                                   Quarter(4), Quarter(5), m_log);
    }
    int32_t GenerateLow() {
        UseFullPlanesAsScratch();
        return Alg_GenerateLow(Pan(), Quarter(4), Quarter(5), Quarter(2), Quarter(3), m_param.width, m_param.height,
                               LowPan(), Quarter(5), LowColorDiff(), m_log);
    }
    int32_t CleanLowColor() {
        if (!IsAnyPass(m_param.colorRadius)) return kStageSuccess;
        const float* sigma = m_param.colorSigma;
        const int32_t* radius = m_param.colorRadius;
        UseFullPlanesAsScratch();
        return Alg_LowColorDiffClean(Quarter(5), LowColorDiff(), m_w2, m_h2, m_param.globalGain, m_param.redBalance,
                                     m_param.greenBalance, m_param.blueBalance, m_param.analogGain,
                                     m_param.ISOAnalogGain, m_param.ISOColorSlope, m_param.ISOColorIntercept, sigma[0],
                                     sigma[1], sigma[2], radius[0], radius[1], radius[2], m_log);
    }
    int32_t CleanLowPan() {
        if (!IsAnyPass(m_param.panRadius)) return kStageSuccess;
        const float* sigma = m_param.panSigma;
        const int32_t* radius = m_param.panRadius;
        UseFullPlanesAsScratch();
        return Alg_LowPanClean(LowPan(), m_w2, m_h2, m_param.globalGain, m_param.analogGain, m_param.ISOAnalogGain,
                               m_param.ISOPanSlope, m_param.ISOPanIntercept, sigma[0], sigma[1], sigma[2], radius[0],
                               radius[1], radius[2], m_log);
    }
    int32_t UpSampleColorDiff() {
        UseStagingAsScratch();
        return Alg_LowColorDiffUpSample(LowColorDiff(), m_w2, m_h2, m_param.cfaPattern, Full(0), Full(1), Full(2),
                                        m_log);
    }
    int32_t UpSamplePan() {
        UseStagingAsScratch();
        return Alg_LowPanUpSample(LowPan(), m_w2, m_h2, FullLowPan(), m_log);
    }
    int32_t RemoveColor() {
        if (m_param.monoEnable != 1) return kStageSuccess;
        for (int index = 0; index < 3; ++index) std::memset(Full(index), 0, size_t(m_count) * sizeof(int32_t));
        return kStageSuccess;
    }
    int32_t CorrectColor() {
        if (!m_param.toneScale) m_param.toneScale = Tonescale12.data();
        const float* m = m_param.colorMatrix;
        return Alg_ColorCorrection(Full(0), Full(1), Full(2), FullLowPan(), m_param.width, m_param.height, m[0], m[1],
                                   m[2], m[3], m[4], m[5], m[6], m[7], m[8], Result(), m_param.toneScale, m_log);
    }
    int32_t Sharpen() {
        UseFullPlanesAsScratch();
        const float* sharpness = m_param.sharpness;
        return Alg_Sharpness(Result(), Pan(), FullLowPan(), m_param.width, m_param.height, sharpness[0], sharpness[1],
                             sharpness[2], sharpness[3], m_param.toneScale, m_log);
    }
    int32_t WriteOutput() {
        const uint32_t hash = calcHash(Result(), 3 * m_param.width, m_param.height, kHashSeed);
        Append(m_log, "Final image check num: %x\n", hash);
        std::memcpy(m_param.output, Result(), size_t(m_count) * 3);
        return kStageSuccess;
    }

    ImageProcessParam& m_param;
    const ImageProcessMemory& m_memory;
    LogText_t* m_log;
    int64_t m_count;
    int32_t m_w2, m_h2;
    int64_t m_lowCount;
};

int32_t WriteSizes(int64_t n, int64_t l, ImageProcessMemory& memory) {
    memory.workSize = static_cast<uint32_t>(2 * n + 12 * l);
    memory.stagingSize = static_cast<uint32_t>(3 * n + 4 * l);
    memory.lowPanSize = static_cast<uint32_t>(4 * l);
    memory.full0Size = memory.full1Size = memory.full2Size = static_cast<uint32_t>(4 * n);
    memory.panSize = static_cast<uint32_t>(2 * n);
    return static_cast<int32_t>(19 * n + 20 * l);
}

bool HasAllBuffers(const ImageProcessParam& param, const ImageProcessMemory& memory) {
    return param.input && param.output && memory.work && memory.staging && memory.lowPan && memory.full0 &&
           memory.full1 && memory.full2 && memory.pan;
}

}  // namespace
}  // namespace kvx

int32_t Api_ImageProcess(ImageProcessParam* param, ImageProcessMemory* memory) noexcept {
    using namespace kvx;
    if (!memory || !param) return kStageFailure;
    LogText_t log{param->log, 0};
    const int64_t n = param->width < 1 || param->height < 1 ? 0 : int64_t{param->width} * param->height;
    const int64_t l = n == 0 ? 0 : int64_t{param->width / 2} * (param->height / 2);
    if (n > INT_MAX || 19 * n + 20 * l > INT_MAX) return Fail(&log, "image size error.\n");
    if (memory->mode == ImageProcessMode_Sizes) return WriteSizes(n, l, *memory);
    if (log.text) *log.text = '\0';
    if (n == 0) return kStageSuccess;
    if (n != kCellPixels * l) return Fail(&log, "image size error.\n");
    if (!HasAllBuffers(*param, *memory)) return kStageFailure;
    return Pipeline(*param, *memory, log).Run();
}
