/** Frames for the noise-reducing pipeline, and all that it writes to. */
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "demosaicers/denoising/PipelineParams.h"

namespace kvx::test {

/** Random values from `least` to `most`. */
template <class T>
std::vector<T> Drawn(size_t count, int least, int most, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<T> values(count);
    for (T& value : values)
        value = static_cast<T>(least + static_cast<int>(random() % (static_cast<unsigned>(most - least) + 1)));
    return values;
}

/** One call's records, with the parameters of a flat function by default and buffers of exactly the sizes asked for. */
class PipelineFrame {
public:
    /** @param guard bytes about each buffer; with 0 the address sanitizer sees accesses outside them */
    PipelineFrame(int width, int height, unsigned seed = 1, size_t guard = 64) : m_guard(guard) {
        tagTrueSenseParam defaults;
        TrueSense_DefaultValues(&defaults);
        param = PipelineParamOf({width, height, 0, 0, width, height}, defaults);
        param.sharpness[1] = 0.75F;
        input = Drawn<uint16_t>(size_t(width) * height, 0, 4095, seed);
        param.input = input.data();
        param.log = log;
        memory.mode = 1;
        Api_ImageProcess(&param, &memory);
        memory.mode = 0;
        const uint32_t sizes[] = {
            memory.workSize,  memory.stagingSize, memory.lowPanSize, memory.full0Size,
            memory.full1Size, memory.full2Size,   memory.panSize,    uint32_t(3 * width * height)};
        for (const uint32_t size : sizes) m_buffers.emplace_back(size + 2 * guard, kPoison);
        void** const places[] = {&memory.work,  &memory.staging, &memory.lowPan, &memory.full0,
                                 &memory.full1, &memory.full2,   &memory.pan};
        for (size_t i = 0; i < std::size(places); ++i) *places[i] = m_buffers[i].data() + guard;
        param.output = m_buffers.back().data() + guard;
    }
    PipelineFrame(const PipelineFrame&) = delete;

    int32_t Run() {
        return Api_ImageProcess(&param, &memory);
    }
    std::vector<uint8_t> Output() const {
        return {m_buffers.back().begin() + long(m_guard), m_buffers.back().end() - long(m_guard)};
    }
    bool OutputIsUntouched() const {
        return std::ranges::all_of(m_buffers.back(), [](uint8_t byte) { return byte == kPoison; });
    }
    bool GuardsIntact() const {
        return std::ranges::all_of(m_buffers, [this](const std::vector<uint8_t>& buffer) {
            const auto isPoison = [](uint8_t byte) { return byte == kPoison; };
            return std::all_of(buffer.begin(), buffer.begin() + long(m_guard), isPoison) &&
                   std::all_of(buffer.end() - long(m_guard), buffer.end(), isPoison);
        });
    }

    ImageProcessParam param;
    ImageProcessMemory memory{};
    std::vector<uint16_t> input;
    char log[4096] = {};

private:
    static constexpr uint8_t kPoison = 0xA5;

    size_t m_guard;
    std::vector<std::vector<uint8_t>> m_buffers;
};

/** Scratch memory of the calling thread, which ends with this object. */
class Scratch {
public:
    explicit Scratch(size_t bytes, size_t buffer1 = 0, size_t buffer2 = 0)
        : m_bytes(bytes), m_buffer1(buffer1), m_buffer2(buffer2) {
        Alg_SetScratch(m_bytes.data(), m_bytes.data() + bytes, buffer1 ? m_buffer1.data() : nullptr,
                       buffer2 ? m_buffer2.data() : nullptr);
    }
    ~Scratch() {
        Alg_SetScratch(nullptr, nullptr, nullptr, nullptr);
    }
    Scratch(const Scratch&) = delete;

private:
    std::vector<uint8_t> m_bytes, m_buffer1, m_buffer2;
};

/** Expects success of a stage. */
inline void Succeed(int32_t result) {
    EXPECT_EQ(result, 0);
}

}  // namespace kvx::test
