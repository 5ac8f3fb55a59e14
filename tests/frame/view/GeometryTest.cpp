#include <gtest/gtest.h>

#include "frame/support/TestFrames.h"

namespace kvx::frame {
namespace {

using Pixel = std::array<uint32_t, 3>;
using Pixels = std::vector<Pixel>;

Pixels PictureOf(const SourceView& view) {
    TestPicture picture(FormatByName("RGB12"), view.width, view.height);
    Convert(view, picture.View());
    Pixels pixels;
    for (uint32_t row = 0; row < view.height; ++row)
        for (uint32_t column = 0; column < view.width; ++column)
            pixels.push_back({picture.At(row, column, 0), picture.At(row, column, 1), picture.At(row, column, 2)});
    return pixels;
}

/** The part of a picture within a border, perhaps mirrored. */
Pixels Interior(const Pixels& picture, uint32_t width, uint32_t height, uint32_t border, bool horizontally = false,
                bool vertically = false) {
    Pixels part;
    for (uint32_t row = border; row < height - border; ++row)
        for (uint32_t column = border; column < width - border; ++column)
            part.push_back(picture[(vertically ? height - 1 - row : row) * size_t{width} +
                                   (horizontally ? width - 1 - column : column)]);
    return part;
}

/** Every 2x2 and 4x4 phase, as 12-bit words and packed. */
std::vector<Format> Mosaics() {
    std::vector<Format> formats;
    for (const Format& format : AllFormats())
        if (format.bits == 12 && (format.family == Family::Bayer || format.family == Family::TrueSense) &&
            (format.layout == Layout::Plain || format.layout == Layout::Mipi))
            formats.push_back(format);
    return formats;
}

TEST(Crop, MovesThePhaseWithTheFirstPixel) {
    for (const Format& format : Mosaics()) {
        TestFrame frame = MakeNoise(format, 24, 16, 1, 3);
        const uint32_t columns = format.layout == Layout::Plain ? 1 : 2;
        for (const _KvxRect region :
             {_KvxRect{0, 0, 24, 16}, {columns, 1, 13, 9}, {3 * columns, 2, 9, 14}, {2 * columns, 7, 1, 1}}) {
            const SourceView cut = Crop(frame.view, region);
            SCOPED_TRACE(Name(format) + " becomes " + Name(cut.format));
            for (uint32_t row = 0; row < 4; ++row)
                for (uint32_t column = 0; column < 4; ++column)
                    ASSERT_EQ(FilterAt(cut.format, row, column), FilterAt(format, region.y + row, region.x + column));
            // The same samples by themselves, as a frame of that format.
            Format plain = Unpacked(cut.format);
            TestFrame words = MakeNoise(Unpacked(format), 24, 16);
            const auto* samples = reinterpret_cast<const uint16_t*>(words.bytes.data());
            TestFrame copy = MakeFrame(plain, region.width, region.height, [&](uint32_t row, uint32_t column) {
                return samples[(region.y + row) * 24 + region.x + column];
            });
            EXPECT_EQ(PictureOf(cut), PictureOf(copy.view));
        }
    }
}

/** A frame whose pixels were mirrored becomes the mirrored picture, to the bit. */
TEST(Mirrored, FramesBecomeMirroredPictures) {
    for (const Format& format : Mosaics())
        for (const uint32_t width : {20u, 21u, 22u, 23u})
            for (const int directions : {1, 2, 3}) {
                const bool horizontally = directions & 1, vertically = directions & 2;
                const uint32_t height = width - 5;
                SCOPED_TRACE(Name(format) + " " + std::to_string(width) + " " + std::to_string(directions));
                TestFrame words = MakeNoise(Unpacked(format), width, height);
                const auto* samples = reinterpret_cast<const uint16_t*>(words.bytes.data());
                TestFrame reversed = MakeFrame(format, width, height, [&](uint32_t row, uint32_t column) {
                    return samples[(vertically ? height - 1 - row : row) * width +
                                   (horizontally ? width - 1 - column : column)];
                });
                const SourceView view = Mirrored(reversed.view, horizontally, vertically);
                EXPECT_EQ(view.horMirrored || view.verMirrored, format.family == Family::TrueSense && directions != 3);
                // Turned about, a TrueSense frame is another phase, whose border has other neighbours.
                const uint32_t border = format.family == Family::TrueSense && directions == 3 ? 6 : 0;
                ASSERT_EQ(Interior(PictureOf(view), width, height, border),
                          Interior(PictureOf(words.view), width, height, border, horizontally, vertically));
                ASSERT_EQ(PictureOf(FlippedVertically(reversed.view)),
                          Interior(PictureOf(reversed.view), width, height, 0, false, true));
                const SourceView again = Mirrored(view, horizontally, vertically);
                EXPECT_TRUE(again.format == format && !again.horMirrored && !again.verMirrored);
                if (width == 22 && format.layout == Layout::Plain) {  // cut on the way
                    const _KvxRect region{3, 2, 13, 9};
                    TestFrame whole =
                        MakeFrame(Unpacked(Crop(view, region).format), 13, 9, [&](uint32_t r, uint32_t c) {
                            return reinterpret_cast<const uint16_t*>(reversed.bytes.data())[(2 + r) * 22 + 3 + c];
                        });
                    whole.view.horMirrored = view.horMirrored;
                    whole.view.verMirrored = view.verMirrored;
                    EXPECT_EQ(PictureOf(Crop(view, region)), PictureOf(whole.view));
                }
            }
}

TEST(Geometry, ThatCannotBeIsRefused) {
    TestFrame frame = MakeNoise(FormatByName("BayerRG12p"), 15, 8);
    SourceView tight = frame.view;
    tight.stride = 0;
    EXPECT_THROW(Crop(frame.view, {1, 0, 4, 4}), Error);  // begins within a byte
    EXPECT_THROW(Crop(tight, {2, 0, 4, 4}), Error);       // rows do
    EXPECT_THROW(FlippedVertically(tight), Error);
    EXPECT_THROW(Crop(frame.view, {0, 0, 16, 8}), Error);
    EXPECT_THROW(Crop(frame.view, {0, 0, 0, 8}), Error);
    EXPECT_THROW(Crop(frame.view, {0xFFFFFFFE, 0, 4, 4}), Error);
    EXPECT_THROW(Mirrored({}, true, false), Error);
}

}  // namespace
}  // namespace kvx::frame
