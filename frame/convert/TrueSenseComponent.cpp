#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <numeric>

#include "KvxDemosaicing/KvxTrueSense.h"
#include "frame/convert/Component.h"
#include "frame/finish/ToneTable.h"

namespace kvx::frame {
namespace {

constexpr uint8_t kToneBits = 12;
constexpr uint32_t kToneWhite = (1u << kToneBits) - 1;

class TrueSenseComponent final : public Component {
public:
    using Handle = std::unique_ptr<KvxTrueSense, decltype(&KvxTrueSense_DeleteComponent)>;

    explicit TrueSenseComponent(Handle component)
        : Component(Family::TrueSense, "TrueSenseAlgType", KvxTrueSense_GetComponent(component.get())),
          m_component(std::move(component)) {
        KvxComponent_SetParamInt(KvxTrueSense_GetComponent(m_component.get()), "impulseFilterEnable", 1);
    }

    /** White is the end of the 12-bit tone curve, shifted to the depth. */
    Route RouteFor(const Format& source, uint8_t destinationBits, bool isFinished) const override {
        if (!isFinished && destinationBits == 8) return {Unpacked(source), 8, 255};
        // The component converts bytes to bytes only; for words the mosaic is widened to the component's 12 bits.
        const Format mosaic = WithBits(Unpacked(source), isFinished || source.bits == 8 ? kToneBits : source.bits);
        const uint8_t bits = isFinished || IntParameter("normalizationEnable") != 0 ? 16 : mosaic.bits;
        return {mosaic, bits, bits < kToneBits ? kToneWhite >> (kToneBits - bits) : kToneWhite << (bits - kToneBits)};
    }

    bool HasDirect(const Route& route, const Format& picture) const override {
        return SamplesPerPixel(picture) == 3 && picture.bits == route.pictureBits &&
               route.pictureWhite == White(picture);
    }

    uint32_t Convert(const SourceView& mosaic, const DestinationView& picture, const SensorNoise* noise) override {
        tagTrueSenseParam params = ParamsFor(mosaic, false);
        if (noise) SetNoise(*noise, params);
        const _KvxImage source = ImageOf(mosaic);
        _KvxImage destination = ImageOf(picture);
        return KvxTrueSense_ConvertImageWith(m_component.get(), &source, &destination, &params, AlgorithmNumber());
    }

    uint32_t ConvertRows(const SourceView& mosaic, const Route& route, bool isFinished, const KvxRowSource& rows,
                         const KvxPixelSink& pixels, const SensorNoise* noise) override {
        tagTrueSenseParam params = ParamsFor(mosaic, isFinished);
        if (noise) SetNoise(*noise, params);
        const _KvxImage frame = ImageOf(mosaic);
        return KvxTrueSense_ConvertRows(m_component.get(), &frame, route.pictureBits == 8 ? 1 : 0, &params,
                                        AlgorithmNumber(), &rows, &pixels);
    }

    void Release() override {
        KvxTrueSense_ReleaseData(m_component.get());
    }

    SensorNoise SetAnalogGain(double gain) override {
        const SensorNoise noise = NoiseAt(Params(), gain);
        SetParameter("analogGain", fmt::format("{}", gain));
        return noise;
    }

    bool GetParameterFinish(Finish& finish) const override {
        const tagTrueSenseParam params = Params();
        finish.matrix = {params.RR, params.RG, params.RB, params.GR, params.GG,
                         params.GB, params.BR, params.BG, params.BB};
        finish.tone = ToneCurve::Table;
        const uint16_t* const curve = params.toneTable ? params.toneTable : TrueSense_DefaultToneTable();
        finish.table.resize(KVX_TONE_TABLE_SIZE);
        std::transform(curve, curve + KVX_TONE_TABLE_SIZE, finish.table.begin(),
                       [](uint16_t value) { return static_cast<uint16_t>(ScaledSample(value, kToneWhite, 65535)); });
        return true;
    }

private:
    tagTrueSenseParam Params() const {
        tagTrueSenseParam params;
        KvxTrueSense_GetParams(m_component.get(), &params);  // fails for null only
        return params;
    }

    tagTrueSenseParam ParamsFor(const SourceView& mosaic, bool isFinished) const {
        tagTrueSenseParam params = Params();
        if (mosaic.horMirrored) params.horMirrored = 1;
        if (mosaic.verMirrored) params.verMirrored = 1;
        if (isFinished) {
            params.normalizationEnable = 1;
            params.RR = params.GG = params.BB = 1;
            params.RG = params.RB = params.GR = params.GB = params.BR = params.BG = 0;
            params.toneTable = LinearCurve();
        }
        return params;
    }

    /** The same noise at every gain. */
    static void SetNoise(const SensorNoise& noise, tagTrueSenseParam& params) {
        const auto set = [](std::initializer_list<double*> fields, double value) {
            for (double* const field : fields) *field = value;
        };
        set({&params.ISOPanSlope_0, &params.ISOPanSlope_1, &params.ISOPanSlope_2, &params.ISOPanSlope_3,
             &params.ISOPanSlope_4},
            noise.pan.slope);
        set({&params.ISOPanIntercept_0, &params.ISOPanIntercept_1, &params.ISOPanIntercept_2, &params.ISOPanIntercept_3,
             &params.ISOPanIntercept_4},
            noise.pan.intercept);
        set({&params.ISOColorSlope_0, &params.ISOColorSlope_1, &params.ISOColorSlope_2, &params.ISOColorSlope_3,
             &params.ISOColorSlope_4},
            noise.colour.slope);
        set({&params.ISOColorIntercept_0, &params.ISOColorIntercept_1, &params.ISOColorIntercept_2,
             &params.ISOColorIntercept_3, &params.ISOColorIntercept_4},
            noise.colour.intercept);
    }

    /** The linear tone curve. */
    static const uint16_t* LinearCurve() {
        static const auto table = [] {
            std::array<uint16_t, KVX_TONE_TABLE_SIZE> entries{};
            std::iota(entries.begin(), entries.end(), uint16_t{0});
            return entries;
        }();
        return table.data();
    }

    Handle m_component;
};

}  // namespace

std::unique_ptr<Component> MakeTrueSenseComponent() {
    return std::make_unique<TrueSenseComponent>(
        TrueSenseComponent::Handle(KvxTrueSense_CreateComponent(), KvxTrueSense_DeleteComponent));
}

}  // namespace kvx::frame
