/** The algorithm "swift": two learned linear filters for each colour, mixed by the gradients around. */
#pragma once

#include <vector>

#include "frame/learned/LearnedInterpolator.h"

namespace kvx::frame {

class SwiftStrip;

class SwiftInterpolator final : public LearnedInterpolator {
public:
    static constexpr const char* kName = "swift";

    /** @param family Bayer or TrueSense */
    explicit SwiftInterpolator(Family family);
    ~SwiftInterpolator() override;

    const char* Name() const override {
        return kName;
    }
    /** Samples of 14 bits are summed in one pass, deeper ones in two. */
    uint8_t WorkingBits(uint8_t sourceBits) const override {
        return sourceBits > 14 ? 16 : 14;
    }
    /** Removes no noise. */
    uint32_t Convert(const SourceView& mosaic, const KvxRowSource& source, uint8_t pictureBits,
                     const KvxPixelSink& pixels, const std::optional<NoiseLine>& noise, int threads) override;
    void Release() noexcept override;

private:
    Family m_family;
    std::vector<std::unique_ptr<SwiftStrip>> m_strips;  // one for each thread
};

}  // namespace kvx::frame
