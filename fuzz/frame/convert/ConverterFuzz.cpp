// Frames of any format, size, strides, parts and mirrorings through a converter with any settings.
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "KvxFrame/KvxFrame.h"
#include "support/GuardedBuffer.h"
#include "support/InstructionSet.h"
#include "support/Refusals.h"

using namespace kvx::fuzz;
using namespace kvx::frame;

namespace {

constexpr uint64_t kMostBytes = 1 << 17;

/** Mostly one that `fits`. */
template <class Predicate>
Format DrawFormat(Input& input, const Predicate& fits) {
    const auto& all = AllFormats();
    const uint32_t start = input.Below(static_cast<uint32_t>(all.size()));
    const Format format = all[start];
    if (input.Below(16) == 0) {
        const auto field = input.Take<uint8_t>();
        const auto& [family, bits, layout, phase, order] = format;
        const Format spoilt[] = {{static_cast<Family>(field), bits, layout, phase, order},
                                 {family, field, layout, phase, order},
                                 {family, bits, static_cast<Layout>(field), phase, order},
                                 {family, bits, layout, field, order},
                                 {family, bits, layout, phase, static_cast<Order>(field)}};
        return input.OneOf(spoilt);
    }
    for (size_t i = 0; i < all.size(); ++i)
        if (fits(all[(start + i) % all.size()])) return all[(start + i) % all.size()];
    return format;
}

uint32_t DrawLength(Input& input) {
    const uint32_t kind = input.Below(32);
    if (kind == 0) return input.Take<uint32_t>();
    return kind == 1 ? input.Below(600) : 1 + input.Below(50);
}

/** A buffer of exactly what the view promises, or too small a one; nothing where that would be much. */
template <class View>
std::unique_ptr<GuardedBuffer> GiveBuffer(Input& input, View& view) {
    const uint64_t rowBytes = RowBytes(view.format, view.width);
    const uint32_t kind = input.Below(32);
    if (kind == 0) view.stride = input.Take<ptrdiff_t>();
    if (kind > 8) view.stride = static_cast<ptrdiff_t>(rowBytes + (input.Flag() ? 0 : input.Below(40)));
    if (kind > 24) view.stride = -view.stride;
    if (kind == 31) view.stride += 1;  // a byte too short where there is no padding
    const uint64_t needed = ImageBytes(view.format, view.width, view.height, view.stride);
    view.capacity = needed > kMostBytes ? 0 : needed;
    if (view.capacity > 0 && input.Below(32) == 0) view.capacity -= 1 + input.Below(static_cast<uint32_t>(needed));
    auto buffer = std::make_unique<GuardedBuffer>(view.capacity, input.Flag() ? Edge::End : Edge::Begin);
    uint8_t* top = buffer->Data();
    if (view.stride < 0 && view.stride >= -ptrdiff_t{kMostBytes} && view.capacity > 0)
        top -= (ptrdiff_t{view.height} - 1) * view.stride;
    view.data = input.Below(64) == 0 ? nullptr : top;
    return buffer;
}

_KvxRect DrawRegion(Input& input, uint32_t width, uint32_t height) {
    if (input.Below(8) == 0)
        return {input.Take<uint32_t>(), input.Take<uint32_t>(), input.Take<uint32_t>(), input.Take<uint32_t>()};
    const uint32_t x = input.Below(std::min(width, 200u) + 1) & ~(input.Flag() ? 3u : 0u);
    const uint32_t y = input.Below(std::min(height, 200u) + 1);
    return {x, y, width - std::min(x, width), height - std::min(y, height)};
}

/** Cuts and mirrors, as often as it is allowed. */
void Move(Input& input, SourceView& source) {
    for (uint32_t moves = input.Below(4); moves > 0; --moves)
        IsRefused(
            [&] {
                switch (input.Below(3)) {
                    case 0:
                        source = Crop(source, DrawRegion(input, source.width, source.height));
                        break;
                    case 1:
                        source = Mirrored(source, input.Flag(), input.Flag());
                        break;
                    default:
                        source = FlippedVertically(source);
                }
            },
            {0x80070007, 0x80070008});
}

Finish DrawFinish(Input& input) {
    const auto number = [&input](double usual) {
        const uint32_t kind = input.Below(8);
        if (kind == 0) return input.Take<double>();
        return kind < 4 ? usual : static_cast<double>(input.Below(256)) / 16 - (usual == 0 ? 8 : 0);
    };
    Finish finish;
    finish.blackLevel = input.Below(8) ? input.Below(300) / 4.0 : input.Take<double>();
    if (input.Below(4) == 0) finish.whiteLevel = input.Flag() ? input.Below(65536) : input.Take<double>();
    if (input.Below(4) == 0) finish.blackLevel.ofFilters[input.Below(4)] = number(0);
    finish.exposure = number(0);
    finish.autoExposure = input.Flag();
    finish.whiteBalance = static_cast<WhiteBalance>(input.Below(16) ? input.Below(4) : input.Take<uint8_t>());
    for (double* gain : {&finish.gains.red, &finish.gains.green, &finish.gains.blue, &finish.gains.pan})
        *gain = number(1);
    for (size_t i = 0; i < 9; ++i) finish.matrix[i] = number(i % 4 == 0);
    finish.tone = static_cast<ToneCurve>(input.Below(16) ? input.Below(3) : input.Take<uint8_t>());
    if (finish.tone == ToneCurve::Table)
        finish.table.assign(input.Below(8) ? 2 + input.Below(5000) : input.Below(70000), input.Take<uint16_t>());
    if (!finish.table.empty()) finish.table.back() = input.Take<uint16_t>();
    return finish;
}

void ChangeSettings(Input& input, Converter& converter) {
    const std::string number = std::to_string(input.Below(8) ? input.Below(8) : input.Take<int32_t>());
    switch (input.Below(6)) {
        case 0:
            IsRefused([&] { converter.SetAlgorithm(number); }, {0x80070002});
            break;
        case 1: {
            const auto& known = AlgorithmsOf(converter.SourceFamily());
            if (!known.empty()) converter.SetAlgorithm(known[input.Below(static_cast<uint32_t>(known.size()))].name);
            break;
        }
        case 2: {
            const auto all = converter.Parameters();
            const std::string name = all.empty() ? "gain" : all[input.Below(static_cast<uint32_t>(all.size()))].name;
            const std::string value = input.Flag() ? number : std::to_string(input.Take<float>());
            IsRefused([&] { converter.SetParameter(name, value); },
                      {0x80070002, 0x80000002, 0x80000003, 0x80000004, 0x80000005});
            break;
        }
        case 3:
            converter.SetThreads(static_cast<int>(input.Below(4)));
            break;
        case 4:
            converter.Release();
            break;
        default:
            IsRefused([&] { converter.SetFinish(DrawFinish(input)); }, {0x80070004});
    }
}

/** Bytes of the buffer that no pixel of the view has. */
std::vector<uint8_t> Outside(const GuardedBuffer& buffer, const DestinationView& view) {
    std::vector<uint8_t> bytes = buffer.Content();
    const auto rowBytes = static_cast<ptrdiff_t>(RowBytes(view.format, view.width));
    const ptrdiff_t stride = view.stride == 0 ? rowBytes : view.stride;
    const ptrdiff_t top = static_cast<const uint8_t*>(view.data) - buffer.Data();
    for (ptrdiff_t row = 0; row < ptrdiff_t{view.height}; ++row)
        std::fill_n(bytes.begin() + top + row * stride, rowBytes, uint8_t{0});
    return bytes;
}

void ConvertFrame(Input& input, Converter& converter) {
    SourceView source;
    source.format = DrawFormat(input, [&](const Format& format) {
        return IsSource(format) && (format.family == converter.SourceFamily() || input.Below(64) == 1);
    });
    source.width = DrawLength(input);
    source.height = DrawLength(input);
    const auto samples = GiveBuffer(input, source);
    input.Fill(samples->Data(), samples->Size());
    samples->MakeReadOnly();
    Move(input, source);

    DestinationView destination;
    destination.format = DrawFormat(input, IsDestination);
    const _KvxRect part{input.Below(3), input.Below(3), source.width, source.height};
    const bool isPart = input.Below(4) == 0;
    destination.width = input.Below(32) ? source.width + (isPart ? part.x + input.Below(3) : 0) : DrawLength(input);
    destination.height = source.height + (isPart ? part.y + input.Below(3) : 0);
    const auto pixels = GiveBuffer(input, destination);
    input.Fill(pixels->Data(), pixels->Size());
    const auto before = pixels->Content();
    if (isPart) IsRefused([&] { destination = Crop(destination, part); }, {0x80070007, 0x80070008});
    if (input.Below(8) == 0) IsRefused([&] { destination = FlippedVertically(destination); }, {0x80070007, 0x80070008});

    IsRefused([&] { CheckSampleDepth(source); }, {0x80070004, 0x80070007, 0x80070008});
    const bool isRefused = IsRefused([&] { converter.Convert(source, destination); },
                                     {0x80070007, 0x80070008, 0x80050007, 0x80060007, 0x80060008});
    const auto after = pixels->Content();
    if (isRefused) {
        Require(after == before, "a refusal leaves the picture as it was");
        return;
    }
    const auto outside = Outside(*pixels, destination);
    std::memcpy(pixels->Data(), before.data(), before.size());
    Require(outside == Outside(*pixels, destination), "only pixels are written");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input input(data, size);
    UseAnyInstructionSet(input);
    Converter converter(static_cast<Family>(input.Below(3)));
    for (int frame = 0; frame < 3 && !input.IsEmpty(); ++frame) {
        for (uint32_t i = input.Below(4); i > 0; --i) ChangeSettings(input, converter);
        ConvertFrame(input, converter);
    }
    return 0;
}
