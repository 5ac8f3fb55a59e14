// Converts a packed camera frame to a display image with black level, white balance and sRGB tone curve.
#include <KvxFrame/KvxFrame.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace frame = kvx::frame;

int main() try {
    constexpr uint32_t width = 64, height = 48;

    // Stands for a camera frame: 12 bits packed, uniform grey half way between black (256) and white.
    const frame::Format format = frame::FormatByName("BayerRG12p");  // or "pRCC", "SCF1WBWG12p", "rggb12le", ...
    std::vector<uint16_t> samples(width, 256 + (4095 - 256) / 2);
    std::vector<uint8_t> raw(frame::ImageBytes(format, width, height, 0));
    for (uint32_t row = 0; row < height; ++row)
        frame::PackSamples(frame::Packing::Pfnc12p, samples.data(), row * width, width, raw.data(), raw.size());
    const frame::SourceView source = {raw.data(), width, height, /*stride=*/0, raw.size(), format};

    std::vector<uint8_t> rgb(width * height * 3);
    const frame::DestinationView destination = {rgb.data(),   width,      height,
                                                /*stride=*/0, rgb.size(), frame::FormatByName("RGB8")};

    frame::Finish finish;
    finish.blackLevel = 256;
    finish.whiteBalance = frame::WhiteBalance::Auto;
    finish.tone = frame::ToneCurve::Srgb;

    frame::Converter converter(format.family);  // reuse it: no allocation after the first frame
    converter.SetAlgorithm("ipp");
    converter.SetFinish(finish);
    converter.Convert(source, destination);
    std::printf("%s to RGB8: %d %d %d\n", frame::Name(format).c_str(), rgb[0], rgb[1], rgb[2]);
} catch (const frame::Error& error) {
    std::fprintf(stderr, "0x%08X: %s\n", static_cast<unsigned>(error.Result()), error.what());
    return EXIT_FAILURE;
}
