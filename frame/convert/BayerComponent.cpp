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
    bool HasDirect(const Route& route, uint8_t destinationBits) const override {
        return destinationBits == route.pictureBits ||
               (destinationBits == 8 && AlgorithmNumber() != KvxBayerAlgorithm_IPP);
    }

    uint32_t Convert(const SourceView& mosaic, const DestinationView& picture, const SensorNoise*) override {
        const _KvxImage source = ImageOf(mosaic);
        _KvxImage destination = ImageOf(picture);
        return mosaic.format.bits > picture.format.bits
                   ? ConvertToBytes(source, mosaic.format.phase, destination)
                   : KvxBayer_ConvertImage(m_component.get(), &source, &destination);
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
    /** The component converts only 10 and 12-bit frames to bytes, and only bilinearly; flat functions take all depths.
     */
    uint32_t ConvertToBytes(const _KvxImage& source, uint8_t phase, const _KvxImage& destination) const {
        constexpr uint8_t kPatterns[] = {1, 0, 3, 2};  // RG, GR, GB, BG in the flat functions' numbers
        const bool isBlueFirst = destination.pixelType == KvxFormat_BGR8;
        const auto convert = isBlueFirst ? BayerToBGR_16u8u_C1C3R : BayerToRGB_16u8u_C1C3R;
        // For the component 3 and 4 mean bilinear; the flat functions would do nothing.
        const int64_t number = AlgorithmNumber();
        const int algorithm =
            number > KvxBayerAlgorithm_EdgeAware ? KvxBayerAlgorithm_Bilinear : static_cast<int>(number);
        return convert(static_cast<const uint16_t*>(source.data), {0, 0, source.width, source.height},
                       {source.width, source.height}, static_cast<int>(source.lineStep),
                       static_cast<int>(source.pixelDepth), static_cast<uint8_t*>(destination.data),
                       static_cast<int>(destination.lineStep), kPatterns[phase], algorithm);
    }

    Handle m_component;
};

}  // namespace

std::unique_ptr<Component> MakeBayerComponent() {
    return std::make_unique<BayerComponent>(
        BayerComponent::Handle(KvxBayer_CreateComponent(), KvxBayer_DeleteComponent));
}

}  // namespace kvx::frame
