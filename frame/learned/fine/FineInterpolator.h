/** "fine": interpolation by a learned network, which also removes noise. */
#pragma once

#include <vector>

#include "frame/learned/LearnedInterpolator.h"

namespace kvx::frame {

class FineInterpolator final : public LearnedInterpolator {
public:
    static constexpr const char* kName = "fine";

    /** @param family Bayer or TrueSense */
    explicit FineInterpolator(Family family);
    ~FineInterpolator() override;

    const char* Name() const override {
        return kName;
    }
    uint8_t WorkingBits(uint8_t) const override {
        return 16;
    }
    uint32_t Convert(const SourceView& mosaic, const KvxRowSource& source, uint8_t pictureBits,
                     const KvxPixelSink& pixels, const std::optional<NoiseLine>& noise, int threads) override;
    void Release() noexcept override;

private:
    class Worker;
    Family m_family;
    std::vector<std::unique_ptr<Worker>> m_workers;  // one for each thread
};

}  // namespace kvx::frame
