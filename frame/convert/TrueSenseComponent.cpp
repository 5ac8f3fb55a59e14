#include <algorithm>
#include <array>
#include <numeric>

#include "KvxDemosaicing/KvxTrueSense.h"
#include "frame/convert/Component.h"

namespace kvx::frame {
namespace {

constexpr uint8_t kToneBits = 12;
constexpr uint32_t kToneWhite = (1u << kToneBits) - 1;

constexpr const char* kNormalization = "normalizationEnable";

/** Changes parameters and restores them at the end of the scope. */
class ScopedParameters {
public:
    explicit ScopedParameters(KvxComponent* store) : m_store(store) {}
    ScopedParameters(const ScopedParameters&) = delete;
    ScopedParameters& operator=(const ScopedParameters&) = delete;
    ~ScopedParameters() {
        for (size_t i = m_count; i-- > 0;) Put(m_saved[i]);
    }

    void SetInt(const char* name, int64_t value) {
        Saved& saved = m_saved[m_count++];
        saved = {name, true, {}};
        KvxComponent_GetParamInt(m_store, name, &saved.value.asInt);
        KvxComponent_SetParamInt(m_store, name, value);
    }
    void SetFloat(const char* name, double value) {
        Saved& saved = m_saved[m_count++];
        saved = {name, false, {}};
        KvxComponent_GetParamFloat(m_store, name, &saved.value.asFloat);
        KvxComponent_SetParamFloat(m_store, name, value);
    }

private:
    struct Saved {
        const char* name;
        bool isInt;
        _KvxParamValue value;
    };
    void Put(const Saved& saved) {
        if (saved.isInt)
            KvxComponent_SetParamInt(m_store, saved.name, saved.value.asInt);
        else
            KvxComponent_SetParamFloat(m_store, saved.name, saved.value.asFloat);
    }

    KvxComponent* m_store;
    std::array<Saved, 12> m_saved{};
    size_t m_count = 0;
};

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
        const uint8_t bits = isFinished || IntParameter(kNormalization) != 0 ? 16 : mosaic.bits;
        return {mosaic, bits, bits < kToneBits ? kToneWhite >> (kToneBits - bits) : kToneWhite << (bits - kToneBits)};
    }

    uint32_t Convert(const SourceView& mosaic, const DestinationView& picture, bool isFinished) override {
        ScopedParameters parameters(KvxTrueSense_GetComponent(m_component.get()));
        if (mosaic.horMirrored) parameters.SetInt("horMirrored", 1);
        if (mosaic.verMirrored) parameters.SetInt("verMirrored", 1);
        if (isFinished) {
            parameters.SetInt(kNormalization, 1);
            for (const char* name : {"RR", "RG", "RB", "GR", "GG", "GB", "BR", "BG", "BB"})
                parameters.SetFloat(name, name[0] == name[1] ? 1 : 0);
        }
        const uint32_t result = KvxTrueSense_SetToneTable(m_component.get(), isFinished ? Straight() : nullptr);
        if (KvxResult_Failed(result)) return result;
        const _KvxImage source = ImageOf(mosaic);
        _KvxImage destination = ImageOf(picture);
        return KvxTrueSense_ConvertImage(m_component.get(), &source, &destination);
    }

    void Release() override {
        KvxTrueSense_ReleaseData(m_component.get());
    }

private:
    /** The linear tone curve. */
    static const uint16_t* Straight() {
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
