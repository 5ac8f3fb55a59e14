#include "KvxDemosaicing/KvxBayer.h"
#include "KvxDemosaicing/KvxBayerFlat.h"
#include "KvxDemosaicing/KvxPixelFormat.h"
#include "frame/convert/Component.h"

namespace kvx::frame {
namespace {

class BayerComponent final : public Component {
public:
    using Handle = std::unique_ptr<KvxBayer, decltype(&KvxBayer_DeleteComponent)>;

    explicit BayerComponent(Handle component)
        : Component(Family::Bayer, "BayerAlgType", KvxBayer_GetComponent(component.get())),
          m_component(std::move(component)) {}

    Route RouteFor(const Format& source, uint8_t, bool isFinished) const override {
        const Format mosaic = WithBits(Unpacked(source), isFinished ? 16 : source.bits);
        return {mosaic, mosaic.bits, White(mosaic)};
    }

    /** The flat functions, which make bytes, would create an in-house interpolator, with its memory, for each frame. */
    bool HasDirect(const Route& route, const Format& picture) const override {
        return IsOfComponent(route.mosaic, picture) ||
               (picture.bits == 8 && AlgorithmNumber() != KvxBayerAlgorithm_IPP);
    }

    uint32_t Convert(const SourceView& mosaic, const DestinationView& picture, const SensorNoise*) override {
        const _KvxImage source = ImageOf(mosaic);
        _KvxImage destination = ImageOf(picture);
        return IsOfComponent(mosaic.format, picture.format)
                   ? KvxBayer_ConvertImage(m_component.get(), &source, &destination)
                   : ConvertToBytes(mosaic, picture);
    }

    uint32_t ConvertRows(const SourceView& mosaic, const Route&, bool, const KvxRowSource& rows,
                         const KvxPixelSink& pixels, const SensorNoise*) override {
        const _KvxImage frame = ImageOf(mosaic);
        return KvxBayer_ConvertRows(m_component.get(), &frame, &rows, &pixels);
    }

    void Release() override {
        KvxBayer_ReleaseData(m_component.get());
    }

    SensorNoise SetAnalogGain(double gain) override {
        return NoiseAt(gain);
    }

    bool GetParameterFinish(Finish&) const override {
        return false;
    }

private:
    /** Whether the component makes such pictures; those that it does not make are bytes, which flat functions make. */
    static bool IsOfComponent(const Format& mosaic, const Format& picture) {
        return picture.bits == mosaic.bits && SamplesPerPixel(picture) == 3;
    }

    uint32_t ConvertToBytes(const SourceView& mosaic, const DestinationView& picture) const {
        constexpr uint8_t kPatterns[] = {1, 0, 3, 2};  // RG, GR, GB, BG in the flat functions' numbers
        // For the component 3 and 4 mean bilinear; the flat functions would do nothing.
        const int64_t number = AlgorithmNumber();
        const int algorithm =
            number > KvxBayerAlgorithm_EdgeAware ? KvxBayerAlgorithm_Bilinear : static_cast<int>(number);
        const _KvxSize size = {mosaic.width, mosaic.height};
        const auto convert = [&](auto function, const auto* samples) {
            return function(samples, {0, 0, size.width, size.height}, size, static_cast<int>(mosaic.stride),
                            mosaic.format.bits, static_cast<uint8_t*>(picture.data), static_cast<int>(picture.stride),
                            kPatterns[mosaic.format.phase], algorithm);
        };
        const bool isBlueFirst = IsBlueFirst(picture.format);
        const bool hasFourth = SamplesPerPixel(picture.format) == 4;
        if (mosaic.format.bits == 8)
            return convert(isBlueFirst ? BayerToBGRA_8u_C1C4R : BayerToRGBA_8u_C1C4R,
                           static_cast<const uint8_t*>(mosaic.data));
        const auto three = isBlueFirst ? BayerToBGR_16u8u_C1C3R : BayerToRGB_16u8u_C1C3R;
        const auto four = isBlueFirst ? BayerToBGRA_16u8u_C1C4R : BayerToRGBA_16u8u_C1C4R;
        return convert(hasFourth ? four : three, static_cast<const uint16_t*>(mosaic.data));
    }

    Handle m_component;
};

}  // namespace

std::unique_ptr<Component> MakeBayerComponent() {
    return std::make_unique<BayerComponent>(
        BayerComponent::Handle(KvxBayer_CreateComponent(), KvxBayer_DeleteComponent));
}

}  // namespace kvx::frame
