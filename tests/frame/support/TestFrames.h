/** Frames of any format, made sample by sample, and pictures that notice what is written beside them. */
#pragma once

#include <array>
#include <cmath>
#include <random>

#include "KvxFrame/KvxFrame.h"
#include "support/GuardedImage.h"

namespace kvx::frame {

struct TestFrame {
    std::vector<uint8_t> bytes;
    SourceView view;
};

/** Samples that `sampleAt(row, column)` gives, in the format's layout, rows `padding` bytes longer than needed. */
template <class SampleAt>
TestFrame MakeFrame(const Format& format, uint32_t width, uint32_t height, const SampleAt& sampleAt,
                    size_t padding = 0) {
    const size_t rowBytes = RowBytes(format, width), stride = rowBytes + padding;
    TestFrame frame{std::vector<uint8_t>(stride * height), {}};
    std::vector<uint16_t> samples(width);
    for (uint32_t row = 0; row < height; ++row) {
        for (uint32_t column = 0; column < width; ++column) samples[column] = sampleAt(row, column);
        uint8_t* to = frame.bytes.data() + row * stride;
        if (const auto packing = PackingOf(format)) {
            PackSamples(*packing, samples.data(), 0, width, to, rowBytes);
            continue;
        }
        const size_t bytes = format.bits == 8 ? 1 : 2, low = format.layout == Layout::BigEndian ? 1 : 0;
        for (size_t column = 0; column < width; ++column) {
            to[bytes * column + low] = static_cast<uint8_t>(samples[column]);
            if (bytes == 2) to[2 * column + 1 - low] = static_cast<uint8_t>(samples[column] >> 8);
        }
    }
    frame.view = {frame.bytes.data(), width, height, static_cast<ptrdiff_t>(stride), frame.bytes.size(), format};
    return frame;
}

/** Noise of the whole range. */
inline TestFrame MakeNoise(const Format& format, uint32_t width, uint32_t height, unsigned seed = 1,
                           size_t padding = 0) {
    std::mt19937 random(seed);
    return MakeFrame(
        format, width, height, [&](uint32_t, uint32_t) { return static_cast<uint16_t>(random() & White(format)); },
        padding);
}

using Colour = std::array<double, 3>;  // red, green, blue from 0 to 1

/** An even area; clear and mono sites see the mean. */
inline TestFrame MakeFlat(const Format& format, uint32_t width, uint32_t height, const Colour& levels) {
    return MakeFrame(
        format, width, height,
        [&](uint32_t row, uint32_t column) {
            const char filter = FilterAt(format, row, column);
            const double level = filter == 'R'   ? levels[0]
                                 : filter == 'G' ? levels[1]
                                 : filter == 'B' ? levels[2]
                                                 : (levels[0] + levels[1] + levels[2]) / 3;
            return static_cast<uint16_t>(std::lround(level * White(format)));
        },
        3);
}

inline Finish EverythingOn() {
    Finish finish;
    finish.blackLevel = 3;
    finish.whiteBalance = WhiteBalance::Auto;
    finish.autoExposure = true;
    finish.tone = ToneCurve::Srgb;
    return finish;
}

class TestPicture {
public:
    TestPicture(const Format& format, uint32_t width, uint32_t height, size_t padding = 5)
        : m_format(format), m_image(0, width, height, RowBytes(format, width), RowBytes(format, width) + padding) {}

    DestinationView View() {
        const _KvxImage& record = m_image.Record();
        return {record.data,      record.width, record.height, static_cast<ptrdiff_t>(record.lineStep),
                record.imageSize, m_format};
    }
    /** A sample; channel 0 to 2 for red, green and blue, 3 for the fourth. */
    uint32_t At(uint32_t row, uint32_t column, uint32_t channel) {
        const bool isBlueFirst =
            m_format.order == Order::Bgr || m_format.order == Order::Bgra || m_format.order == Order::Bgrx;
        if (isBlueFirst && channel < 3) channel = 2 - channel;
        const size_t index = size_t{column} * SamplesPerPixel(m_format) + channel;
        const uint8_t* samples = m_image.Row(row);
        return m_format.bits == 8 ? samples[index] : samples[2 * index] | samples[2 * index + 1] << 8;
    }
    test::GuardedImage& Image() {
        return m_image;
    }

private:
    Format m_format;
    test::GuardedImage m_image;
};

/** What a converter makes of a frame. */
inline std::vector<uint8_t> PixelsOf(Converter& converter, const SourceView& source, const char* destination) {
    TestPicture picture(FormatByName(destination), source.width, source.height);
    converter.Convert(source, picture.View());
    return picture.Image().Pixels();
}

}  // namespace kvx::frame
