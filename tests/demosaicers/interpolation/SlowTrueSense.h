/**
 * The interpolating TrueSense demosaicers, written site by site on whole planes: slow, plain, and with no code in
 * common with the library.
 */
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace kvx::test {

/** Three numbers of a pixel: red, green, blue. */
struct Colour {
    int value[3];
};

/** A frame and the region of it that is converted, in the source's orientation, as stored, row by row. */
struct SlowSource {
    int width, height;  // of the region
    std::vector<int> samples;
    int depth;
    unsigned grid;
    bool horMirrored = false, verMirrored = false;
    int left = 0, top = 0, right = 0, bottom = 0;  // of the frame about the region
    int margin = 0;                                // sites about the region that the working area has in addition

    bool Has(int row, int column) const {
        return row >= -top && row < height + bottom && column >= -left && column < width + right;
    }
    int At(int row, int column) const {
        return samples.at(size_t(row + top) * (left + width + right) + column + left);
    }
};

struct SlowPicture {
    int width, height;
    std::vector<Colour> pixels;  // 12-bit-scaled plane values, in the source's orientation
};

/** The planes of the fast interpolator, before clamp, matrix and tone. */
SlowPicture SlowInterpolation(const SlowSource& source);
/** Those of the Bayer-like demosaicer. */
SlowPicture SlowBayerLike(const SlowSource& source);

/** The working area's raw mosaic of 12-bit samples, row by row: whole tiles about the region and its margin. */
std::vector<uint16_t> SlowMosaic(const SlowSource& source, int& width, int& height);
/** The region of the working area, in the source's orientation. */
SlowPicture SlowRegion(const SlowSource& source, const std::function<Colour(int row, int column)>& pixelAt);

/** What is stored for a pixel, before it is cut to the width of a sample. */
Colour SlowOutput(const Colour& planes, const double matrix[9], const uint16_t* tone, int shift);

}  // namespace kvx::test
