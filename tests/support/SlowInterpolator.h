/**
 * The in-house interpolator, written plainly: whole planes, one site after the other, no vectors, bands or rings.
 *
 * Shares nothing with the library but the order in which numbers are added, so that both give the same bits.
 */
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <vector>

namespace kvx::test {

class SlowInterpolator {
public:
    /** @param pattern the top-left cell by rows, "RGGB" and so on; at least 2x2 samples */
    SlowInterpolator(const std::vector<uint16_t>& samples, int width, int height, int depth, const char* pattern)
        : m_width(width), m_height(height), m_depth(depth), m_pattern(pattern) {
        const auto mirrored = [](int i, int size) {
            const int last = (size + 1) / 2 * 2 - 1;  // of whole cells
            while (i < 0 || i > last) i = i < 0 ? -i : 2 * last - i;
            return i == size ? size - 2 : i;
        };
        const int most = (1 << depth) - 1;
        m_most = Unit(most);
        m_mosaic = Fill([&](int y, int x) {
            return Unit(std::min<int>(samples[mirrored(y, height) * width + mirrored(x, width)], most));
        });
    }

    /** Red, green and blue of every pixel. */
    std::vector<uint16_t> Picture() {
        FindGreen();
        const Plane red = FindColour('R'), blue = FindColour('B');
        const Plane* const channels[] = {&red, &m_green, &blue};
        std::vector<uint16_t> picture;
        for (int y = 0; y < m_height; ++y)
            for (int x = 0; x < m_width; ++x)
                for (const Plane* plane : channels) {
                    const float value = std::clamp((*plane)(y, x), 0.0f, m_most);
                    picture.push_back(static_cast<uint16_t>(std::floor(std::ldexp(value, m_depth - 8) + 0.5f)));
                }
        return picture;
    }

private:
    static constexpr int kPad = 24;

    struct Plane {
        int columns = 0, rows = 0;
        std::vector<float> values;
        float operator()(int y, int x) const {  // what lies too far out is not needed: any number will do
            y = std::clamp(y + kPad, 0, rows - 1), x = std::clamp(x + kPad, 0, columns - 1);
            return values[static_cast<size_t>(y) * columns + x];
        }
    };
    struct Towards {
        int y, x;
    };

    Plane Fill(const std::function<float(int, int)>& valueAt) const {
        Plane plane{m_width + 2 * kPad, m_height + 2 * kPad, {}};
        for (int y = -kPad; y < m_height + kPad; ++y)
            for (int x = -kPad; x < m_width + kPad; ++x) plane.values.push_back(valueAt(y, x));
        return plane;
    }
    float Unit(int sample) const {
        return std::ldexp(static_cast<float>(sample), 8 - m_depth);
    }
    char ColourAt(int y, int x) const {
        return m_pattern[(y & 1) * 2 + (x & 1)];
    }
    static float Square(float a) {
        return a * a;
    }

    struct Axis {
        Plane difference, cost, local;
    };

    Axis FindAxis(Towards to) const {
        const auto along = [to](const Plane& p, int y, int x, int i) { return p(y + i * to.y, x + i * to.x); };
        Axis axis;
        Plane& d = axis.difference;
        d = Fill([&](int y, int x) {
            const auto m = [&](int i) { return along(m_mosaic, y, x, i); };
            const float estimate = (m(-1) + m(1)) / 2 + (2 * m(0) - m(-2) - m(2)) * 3 / 16;
            return ColourAt(y, x) == 'G' ? m(0) - estimate : estimate - m(0);
        });
        const Plane smooth = Fill([&](int y, int x) {
            const auto at = [&](int i) { return along(d, y, x, i); };
            return ((at(-2) + at(2)) + 2 * ((at(-1) + at(1)) + at(0))) / 8;
        });
        const Plane gradient =
            WindowSum([&](int y, int x) { return std::abs(along(d, y, x, 1) - along(d, y, x, -1)); });
        const Plane change =
            WindowSum([&](int y, int x) { return Square(along(smooth, y, x, 2) - along(smooth, y, x, -2)); });
        const Plane noise = WindowSum([&](int y, int x) { return 8 * Square(d(y, x) - smooth(y, x)); });
        axis.cost = Fill([&](int y, int x) { return Square(gradient(y, x) + 0.125f); });
        axis.local = Fill([&](int y, int x) { return change(y, x) / ((change(y, x) + noise(y, x)) + 0.125f); });
        return axis;
    }

    /** Sums over the colour sites in windows of 5x5 about colour sites. */
    Plane WindowSum(const std::function<float(int, int)>& valueAt) const {
        const Plane values = Fill(valueAt);
        return Fill([&](int y, int x) {
            const auto even = [&](int dx) {
                return (values(y - 2, x + dx) + values(y + 2, x + dx)) + values(y, x + dx);
            };
            const auto between = [&](int dx) { return values(y - 1, x + dx) + values(y + 1, x + dx); };
            return ((even(-2) + even(2)) + even(0)) + (between(-1) + between(1));
        });
    }

    void FindGreen() {
        const Axis vertical = FindAxis({1, 0}), horizontal = FindAxis({0, 1});
        const auto line = [](const Axis& axis, Towards to, int y, int x) {
            const auto d = [&](int i) { return axis.difference(y + i * to.y, x + i * to.x); };
            const float mean = ((d(0) + d(1)) + (d(2) + (d(3) + d(4)))) * 0.2f;
            return mean + axis.local(y + 2 * to.y, x + 2 * to.x) * ((d(0) + d(1)) / 2 - mean);
        };
        m_green = Fill([&](int y, int x) {
            if (ColourAt(y, x) == 'G') return m_mosaic(y, x);
            const float lines[4] = {line(vertical, {-1, 0}, y, x), line(vertical, {1, 0}, y, x),
                                    line(horizontal, {0, -1}, y, x), line(horizontal, {0, 1}, y, x)};
            const float costs[4] = {vertical.cost(y - 2, x), vertical.cost(y + 2, x), horizontal.cost(y, x - 2),
                                    horizontal.cost(y, x + 2)};
            const Weights weights(costs);
            return std::clamp(m_mosaic(y, x) + weights.Sum(lines) / weights.total, 0.0f, m_most);
        });
    }

    /** Inverses of four costs, times the product of all. */
    struct Weights {
        float w[4], total;
        explicit Weights(const float (&c)[4])
            : w{c[1] * (c[2] * c[3]), c[0] * (c[2] * c[3]), c[3] * (c[0] * c[1]), c[2] * (c[0] * c[1])},
              total((w[0] + w[1]) + (w[2] + w[3])) {}
        float Sum(const float (&v)[4]) const {
            return (w[0] * v[0] + w[1] * v[1]) + (w[2] * v[2] + w[3] * v[3]);
        }
    };

    /** Slopes at the sites of a colour. */
    Plane FindSlopes(char colour) const {
        const auto product = [&](int y, int x, Towards to, bool mixed) {
            const auto step = [&](const Plane& p) { return p(y + to.y, x + to.x) - p(y, x); };
            return step(m_green) * step(mixed ? m_mosaic : m_green);
        };
        const auto window = [&](int y, int x, bool mixed) {
            const auto row = [&](int dy) {
                const auto site = [&](int dx) {
                    return product(y + dy, x + dx, {0, 2}, mixed) + product(y + dy, x + dx, {2, 0}, mixed);
                };
                return (site(-4) + site(2)) + (site(-2) + site(0));
            };
            return (row(-4) + row(2)) + (row(-2) + row(0));
        };
        return Fill([&](int y, int x) {
            if (ColourAt(y, x) != colour) return 1.0f;
            return std::clamp((window(y, x, true) + 2000) / (window(y, x, false) + 2000), 0.0f, 2.0f);
        });
    }

    float Step(const Plane& d, int y, int x, Towards to) const {
        const float near = d(y + to.y, x + to.x);
        return std::abs(near - d(y - to.y, x - to.x)) + std::abs(near - d(y + 3 * to.y, x + 3 * to.x));
    }

    /** The colour at a site from four neighbours, `steps` being those of the differences. */
    float Follow(const Plane& d, const float (&steps)[4], const Towards (&to)[4], float slope, int y, int x) const {
        float costs[4], greens[4], differences[4];
        for (int i = 0; i < 4; ++i) {
            greens[i] = m_green(y + to[i].y, x + to[i].x);
            differences[i] = d(y + to[i].y, x + to[i].x);
            costs[i] = Square((0.25f * std::abs(greens[i] - m_green(y, x)) + steps[i]) + 8);
        }
        const Weights weights(costs);
        const float offset = weights.Sum(differences) + (1 - slope) * weights.Sum(greens);
        return offset * (1 / weights.total) + slope * m_green(y, x);
    }

    /** Differences colour - green at all red and blue sites. */
    Plane FindDifferences(char colour, const Plane& slopes) const {
        static constexpr Towards diagonals[4] = {{-1, -1}, {1, 1}, {-1, 1}, {1, -1}};
        const Plane known = Fill([&](int y, int x) { return m_mosaic(y, x) - m_green(y, x); });
        return Fill([&](int y, int x) {
            if (ColourAt(y, x) == 'G' || ColourAt(y, x) == colour) return known(y, x);
            const float slope =
                ((slopes(y - 1, x - 1) + slopes(y + 1, x + 1)) + (slopes(y - 1, x + 1) + slopes(y + 1, x - 1))) / 4;
            float steps[4];
            for (int i = 0; i < 4; ++i) steps[i] = Step(known, y, x, diagonals[i]);
            const float value = Follow(known, steps, diagonals, slope, y, x);
            return std::clamp(value, 0.0f, m_most) - m_green(y, x);
        });
    }

    Plane FindColour(char colour) const {
        static constexpr Towards across[4] = {{0, -1}, {0, 1}, {-1, 0}, {1, 0}};
        const char opposite = colour == 'R' ? 'B' : 'R';
        const Plane slopes = FindSlopes(colour);
        const Plane mine = FindDifferences(colour, slopes);
        const Plane others = FindDifferences(opposite, FindSlopes(opposite));
        return Fill([&](int y, int x) {
            if (ColourAt(y, x) == colour) return m_mosaic(y, x);
            if (ColourAt(y, x) != 'G') return mine(y, x) + m_green(y, x);
            float steps[4];
            for (int i = 0; i < 4; ++i) steps[i] = (Step(mine, y, x, across[i]) + Step(others, y, x, across[i])) / 2;
            const bool isSideways = ColourAt(y, x + 1) == colour;
            const float slope =
                (isSideways ? slopes(y, x - 1) + slopes(y, x + 1) : slopes(y - 1, x) + slopes(y + 1, x)) / 2;
            return Follow(mine, steps, across, slope, y, x);
        });
    }

    int m_width, m_height, m_depth;
    const char* m_pattern;
    float m_most = 0;
    Plane m_mosaic, m_green;
};

}  // namespace kvx::test
