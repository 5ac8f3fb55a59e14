#include "demosaicers/interpolation/SlowTrueSense.h"

#include <algorithm>
#include <cstdlib>
#include <opencv2/imgproc.hpp>
#include <string>

namespace kvx::test {
namespace {

const std::string kTile = "WBWGBWGWWGWRGWRW";
constexpr int kNone = 1 << 20;  // no value a plane can hold

/** A plane of the working area; coordinates outside are folded back about the site that asks. */
struct Plane {
    Plane(int w, int h) : width(w), height(h), values(size_t(w) * h, kNone) {}
    int& At(int row, int column) {
        return values.at(size_t(row) * width + column);
    }
    int Beside(int row, int column, int down, int right) {
        const int r = row + down, c = column + right;
        return At(r < 0 || r >= height ? row - down : r, c < 0 || c >= width ? column - right : c);
    }
    bool IsBorder(int row, int column) const {
        return row == 0 || column == 0 || row == height - 1 || column == width - 1;
    }

    int width, height;
    std::vector<int> values;
};

char KindAt(int row, int column) {
    return kTile[(row & 3) * 4 + (column & 3)];
}

int Word(int value) {
    return static_cast<int16_t>(static_cast<uint16_t>(value));
}

/** Fills one row or column, given as a function of place, on both sides of [first, last]. */
void FillMargins(int first, int last, int end, const std::function<int&(int)>& at,
                 const std::function<char(int)>& kind) {
    std::vector<int> given(end, kNone);
    for (int place = first; place <= last; ++place) given[place] = at(place);
    for (int place = 0; place < end; ++place) {
        if (given[place] != kNone) continue;
        int from = place;
        while (from < first) from += 4;
        while (from > last) from -= 4;
        if (from < first || from > last) {  // the pattern-equal sample does not exist: the nearest of this kind
            from = -1;
            for (int distance = 1; distance < 12 && from < 0; ++distance)
                for (const int candidate : {place - distance, place + distance})
                    if (candidate >= first && candidate <= last && kind(candidate) == kind(place)) from = candidate;
            if (from < 0) from = place < first ? first : last;
        }
        at(place) = given[from];
    }
}

Plane RawMosaic(const SlowSource& source) {
    const int firstRow = source.margin + int(source.grid / 4), firstColumn = source.margin + int(source.grid % 4);
    const auto whole = [](int length) { return (length + 3) & ~3; };
    Plane raw(whole(firstColumn + source.width + source.margin), whole(firstRow + source.height + source.margin));
    int top = raw.height, bottom = 0, left = raw.width, right = 0;  // of what the source has
    for (int r = 0; r < raw.height; ++r)
        for (int c = 0; c < raw.width; ++c) {
            const int i = r - firstRow, j = c - firstColumn;
            const int row = source.verMirrored ? source.height - 1 - i : i;
            const int column = source.horMirrored ? source.width - 1 - j : j;
            const bool isInside = i >= 0 && i < source.height && j >= 0 && j < source.width;
            if (!(source.margin ? source.Has(row, column) : isInside)) continue;
            top = std::min(top, r), bottom = std::max(bottom, r);
            left = std::min(left, c), right = std::max(right, c);
            const int sample = source.At(row, column);
            raw.At(r, c) = Word(source.depth <= 12 ? sample << (12 - source.depth) : sample >> (source.depth - 12));
        }
    for (int column = left; column <= right; ++column)
        FillMargins(
            top, bottom, raw.height, [&](int row) -> int& { return raw.At(row, column); },
            [&](int row) { return KindAt(row, column); });
    for (int row = 0; row < raw.height; ++row)
        FillMargins(
            left, right, raw.width, [&](int column) -> int& { return raw.At(row, column); },
            [&](int column) { return KindAt(row, column); });
    return raw;
}

/** Pan everywhere. */
Plane PanOf(Plane& raw) {
    Plane pan = raw;
    for (int r = 0; r < raw.height; ++r)
        for (int c = 0; c < raw.width; ++c) {
            if (KindAt(r, c) == 'W') continue;
            const int left = raw.Beside(r, c, 0, -1), right = raw.Beside(r, c, 0, 1);
            const int up = raw.Beside(r, c, -1, 0), down = raw.Beside(r, c, 1, 0);
            if (raw.IsBorder(r, c))
                pan.At(r, c) = (left + right + up + down) >> 2;
            else
                pan.At(r, c) = std::abs(right - left) < std::abs(down - up) ? (left + right) >> 1 : (up + down) >> 1;
        }
    return pan;
}

/** The sum of the differences pan - colour at places beside a site. */
int Differences(Plane& colour, Plane& pan, int r, int c, std::initializer_list<std::pair<int, int>> places) {
    int sum = 0;
    for (const auto& [down, right] : places) sum += pan.Beside(r, c, down, right) - colour.Beside(r, c, down, right);
    return sum;
}

/** Pan minus the mean of the differences at four sites, two rows or columns away or both. */
void CompleteFromFour(Plane& colour, Plane& pan, int r, int c, bool diagonal) {
    const int sum = diagonal ? Differences(colour, pan, r, c, {{-2, -2}, {-2, 2}, {2, -2}, {2, 2}})
                             : Differences(colour, pan, r, c, {{-2, 0}, {0, -2}, {0, 2}, {2, 0}});
    colour.At(r, c) = Word(pan.At(r, c) - (sum >> 2));
}

void CompleteAtPanSite(Plane& colour, Plane& pan, int r, int c) {
    if (pan.IsBorder(r, c)) {
        const int sum = colour.Beside(r, c, 0, -1) + colour.Beside(r, c, 0, 1) + colour.Beside(r, c, -1, 0) +
                        colour.Beside(r, c, 1, 0);
        colour.At(r, c) = sum >> 2;
        return;
    }
    const int horizontal = std::abs(pan.At(r, c + 1) - pan.At(r, c - 1));
    const int vertical = std::abs(pan.At(r + 1, c) - pan.At(r - 1, c));
    const int sum = vertical > horizontal ? Differences(colour, pan, r, c, {{0, -1}, {0, 1}})
                                          : Differences(colour, pan, r, c, {{-1, 0}, {1, 0}});
    colour.At(r, c) = Word(pan.At(r, c) - (sum >> 1));
}

}  // namespace

std::vector<uint16_t> SlowMosaic(const SlowSource& source, int& width, int& height) {
    Plane raw = RawMosaic(source);
    width = raw.width;
    height = raw.height;
    return {raw.values.begin(), raw.values.end()};
}

SlowPicture SlowRegion(const SlowSource& source, const std::function<Colour(int row, int column)>& pixelAt) {
    SlowPicture picture{source.width, source.height, {}};
    for (int i = 0; i < source.height; ++i)
        for (int j = 0; j < source.width; ++j) {
            const int row = source.verMirrored ? source.height - 1 - i : i;
            const int column = source.horMirrored ? source.width - 1 - j : j;
            picture.pixels.push_back(
                pixelAt(source.margin + row + int(source.grid / 4), source.margin + column + int(source.grid % 4)));
        }
    return picture;
}

SlowPicture SlowInterpolation(const SlowSource& source) {
    Plane raw = RawMosaic(source);
    Plane pan = PanOf(raw);
    Plane planes[3] = {raw, raw, raw};
    const auto forEachSite = [&](const auto& visit) {
        for (int r = 0; r < raw.height; ++r)
            for (int c = 0; c < raw.width; ++c) visit(KindAt(r, c), r, c);
    };
    forEachSite([&](char kind, int r, int c) {  // red and blue at each other's sites, green at both
        if (kind == 'R' || kind == 'B') {
            CompleteFromFour(planes[1], pan, r, c, false);
            CompleteFromFour(planes[kind == 'R' ? 2 : 0], pan, r, c, true);
        }
    });
    forEachSite([&](char kind, int r, int c) {
        if (kind == 'G')
            for (const int channel : {0, 2}) CompleteFromFour(planes[channel], pan, r, c, false);
    });
    forEachSite([&](char kind, int r, int c) {
        if (kind == 'W')
            for (Plane& plane : planes) CompleteAtPanSite(plane, pan, r, c);
    });
    return SlowRegion(source, [&](int r, int c) {
        return Colour{planes[0].At(r, c), planes[1].At(r, c), planes[2].At(r, c)};
    });
}

SlowPicture SlowBayerLike(const SlowSource& source) {
    Plane raw = RawMosaic(source);
    Plane pan = PanOf(raw);
    Plane mosaic = raw;
    for (int r = 0; r < raw.height; ++r)
        for (int c = 0; c < raw.width; ++c) {
            if (KindAt(r, c) != 'W') continue;
            const int v = r ^ 1, h = c ^ 1;  // the other row and column of the 2x2 block
            const int sum = pan.At(v, c) - raw.At(v, c) + pan.At(r, h) - raw.At(r, h);
            mosaic.At(r, c) = Word(pan.At(r, c) - (sum >> 1));
        }
    cv::Mat half(raw.height / 2, raw.width / 2, CV_32S);
    for (int i = 0; i < half.rows; ++i)
        for (int j = 0; j < half.cols; ++j) {
            int sum = 0;
            for (const int r : {2 * i, 2 * i + 1})
                for (const int c : {2 * j, 2 * j + 1}) sum += cv::saturate_cast<short>(mosaic.At(r, c) - pan.At(r, c));
            half.at<int>(i, j) = sum >> 2;
        }
    double minimum = 0;
    cv::minMaxIdx(half, &minimum);
    cv::Mat positive, positiveColour, colour, full;
    cv::Mat(half - cv::Scalar(minimum)).convertTo(positive, CV_16U);
    cv::cvtColor(positive, positiveColour, 46);
    cv::add(positiveColour, cv::Scalar::all(minimum), colour, cv::noArray(), CV_16S);
    cv::resize(colour, full, cv::Size(raw.width, raw.height), 0, 0, cv::INTER_LINEAR);
    return SlowRegion(source, [&](int r, int c) {
        const auto difference = full.at<cv::Vec3s>(r, c);
        const int p = pan.At(r, c);
        return Colour{Word(p + difference[0]), Word(p + difference[1]), Word(p + difference[2])};
    });
}

Colour SlowOutput(const Colour& planes, const double matrix[9], const uint16_t* tone, int shift) {
    Colour result{};
    for (int channel = 0; channel < 3; ++channel) {
        const double* m = matrix + 3 * channel;
        const double sum = m[0] * planes.value[0] + m[1] * planes.value[1] + m[2] * planes.value[2];
        const int index = !(sum > 0) ? 0 : sum >= 4095 ? 4095 : static_cast<int>(sum);
        const int entry = static_cast<int16_t>(tone[index]);
        result.value[channel] = shift < 0 ? entry >> -shift : entry << shift;
    }
    return result;
}

}  // namespace kvx::test
