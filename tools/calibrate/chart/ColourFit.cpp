#include "tools/calibrate/chart/ColourFit.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <opencv2/core/optim.hpp>

#include "tools/ToolError.h"
#include "tools/calibrate/chart/ColourDifference.h"

namespace kvx::tool {
namespace {

constexpr size_t kLeastGreys = 3;
constexpr size_t kLeastPatches = 15;
/** Free elements of the matrix: the rest follows from rows that sum to 1. */
constexpr int kElements = 6;

/** A row's first two free elements are those off the diagonal. */
cv::Matx33d MatrixOf(const double* elements) {
    const double* e = elements;
    return {1 - e[0] - e[1], e[0], e[1], e[2], 1 - e[2] - e[3], e[3], e[4], e[5], 1 - e[4] - e[5]};
}

PatchErrors Errors(const PatchSamples& samples, const frame::Gains& gains, const cv::Matx33d& matrix, double exposure) {
    PatchErrors errors;
    for (int i = 0; i < kChartPatches; ++i) {
        const LinearRgb colour = Corrected(samples[i].light, gains, matrix, exposure);
        errors[i] = samples[i].isClipped ? -1 : ColourDifference(LabFromLinear(colour), ChartPatches()[i].lab);
    }
    return errors;
}

frame::Gains GreyGains(const PatchSamples& samples, const std::string& name) {
    LinearRgb sum;
    size_t greys = 0;
    for (const int patch : kGreyPatches) {
        if (!samples[patch].isClipped) {
            sum += samples[patch].light;
            ++greys;
        }
    }
    if (greys < kLeastGreys || std::min({sum[0], sum[1], sum[2]}) <= 0) {
        Fail(ExitCode::Frame, "{}: the grey patches are clipped or black: use a frame with another exposure", name);
    }
    const double brightest = std::max({sum[0], sum[1], sum[2]});
    return {brightest / sum[0], brightest / sum[1], brightest / sum[2], brightest / sum[1]};
}

/** The exposure at which the greys have the brightness of their references. */
double GreyExposure(const PatchSamples& samples, const frame::Gains& gains) {
    double seen = 0, expected = 0;
    for (const int patch : kGreyPatches) {
        if (!samples[patch].isClipped) {
            seen += samples[patch].light[1] * gains.green;
            expected += ChartPatches()[patch].linear[1];
        }
    }
    return expected / seen;
}

/** What is fitted: the free elements of the matrix, then the logarithm of each chart's exposure. */
class Fit {
public:
    Fit(const std::vector<PatchSamples>& charts, const std::vector<frame::Gains>& gains)
        : m_charts(charts), m_gains(gains) {
        for (size_t chart = 0; chart < charts.size(); ++chart) {
            m_exposures.push_back(GreyExposure(charts[chart], gains[chart]));
        }
    }

    /** Least squares in linear light, in which a patch counts the more the darker it is, as for the eye. */
    std::vector<double> LinearStart() const {
        std::vector<double> start(kElements + m_charts.size());
        for (int row = 0; row < 3; ++row) {
            const int first = row == 0 ? 1 : 0;
            const int second = row == 2 ? 1 : 2;
            cv::Mat_<double> equations(0, 2), targets(0, 1);
            ForEachPatch([&](const LinearRgb& light, const ChartPatch& reference) {
                const double weight = 1 / (reference.linear[1] + 0.05);
                equations.push_back(cv::Mat_<double>({1, 2}, {weight * (light[first] - light[row]),  //
                                                              weight * (light[second] - light[row])}));
                targets.push_back(weight * (reference.linear[row] - light[row]));
            });
            cv::Mat_<double> elements;
            cv::solve(equations, targets, elements, cv::DECOMP_SVD);
            start[size_t{2} * row] = elements(0);
            start[size_t{2} * row + 1] = elements(1);
        }
        for (size_t chart = 0; chart < m_charts.size(); ++chart) {
            start[kElements + chart] = std::log(m_exposures[chart]);
        }
        return start;
    }

    /** The mean colour difference. */
    double Value(const double* x) const {
        const cv::Matx33d matrix = MatrixOf(x);
        double sum = 0;
        for (size_t chart = 0; chart < m_charts.size(); ++chart) {
            sum += MeanError(Errors(m_charts[chart], m_gains[chart], matrix, std::exp(x[kElements + chart])));
        }
        return sum / static_cast<double>(m_charts.size());
    }

private:
    template <typename Action>
    void ForEachPatch(const Action& action) const {
        for (size_t chart = 0; chart < m_charts.size(); ++chart) {
            for (int i = 0; i < kChartPatches; ++i) {
                if (const PatchSample& sample = m_charts[chart][i]; !sample.isClipped) {
                    action(Corrected(sample.light, m_gains[chart], cv::Matx33d::eye(), m_exposures[chart]),
                           ChartPatches()[i]);
                }
            }
        }
    }

    const std::vector<PatchSamples>& m_charts;
    const std::vector<frame::Gains>& m_gains;
    std::vector<double> m_exposures;
};

/** Nelder and Mead's method, started again where it ended: a collapsed simplex must not be the end. */
std::vector<double> Minimised(int dimensions, const std::function<double(const double*)>& value,
                              const std::vector<double>& start) {
    class Function : public cv::MinProblemSolver::Function {
    public:
        Function(int dimensions, const std::function<double(const double*)>& value)
            : m_dimensions(dimensions), m_value(value) {}
        int getDims() const override {
            return m_dimensions;
        }
        double calc(const double* x) const override {
            return m_value(x);
        }

    private:
        int m_dimensions;
        const std::function<double(const double*)>& m_value;
    };
    constexpr int kStarts = 4;
    constexpr double kStep = 0.1;
    const cv::TermCriteria criteria(cv::TermCriteria::MAX_ITER + cv::TermCriteria::EPS, 4000, 1e-7);
    cv::Mat_<double> best(1, dimensions, const_cast<double*>(start.data()));
    best = best.clone();
    for (int i = 0; i < kStarts; ++i) {
        cv::DownhillSolver::create(cv::makePtr<Function>(dimensions, value),
                                   cv::Mat_<double>(1, dimensions, i % 2 == 0 ? kStep : -kStep), criteria)
            ->minimize(best);
    }
    return {best.begin(), best.end()};
}

frame::Gains MeanGains(const std::vector<frame::Gains>& all) {
    cv::Vec3d sum;
    for (const frame::Gains& gains : all) {
        sum += cv::Vec3d(std::log(gains.red), std::log(gains.green), std::log(gains.blue));
    }
    const cv::Vec3d mean = sum / static_cast<double>(all.size());
    const double least = std::min({mean[0], mean[1], mean[2]});
    const double green = std::exp(mean[1] - least);
    return {std::exp(mean[0] - least), green, std::exp(mean[2] - least), green};
}

}  // namespace

LinearRgb Corrected(const LinearRgb& light, const frame::Gains& gains, const cv::Matx33d& matrix, double exposure) {
    return matrix * LinearRgb(light[0] * gains.red, light[1] * gains.green, light[2] * gains.blue) * exposure;
}

double MeanError(const PatchErrors& errors) {
    double sum = 0;
    int count = 0;
    for (const double error : errors) {
        sum += std::max(error, 0.0);
        count += error >= 0 ? 1 : 0;
    }
    return sum / std::max(count, 1);
}

ColourFit FitColours(const std::vector<PatchSamples>& charts, const std::vector<std::string>& names) {
    std::vector<frame::Gains> gains;
    for (size_t chart = 0; chart < charts.size(); ++chart) {
        gains.push_back(GreyGains(charts[chart], names[chart]));
        const auto usable = std::count_if(charts[chart].begin(), charts[chart].end(),
                                          [](const PatchSample& sample) { return !sample.isClipped; });
        if (usable < static_cast<std::ptrdiff_t>(kLeastPatches)) {
            Fail(ExitCode::Frame, "{}: {} of {} patches are clipped: use a frame with less exposure", names[chart],
                 kChartPatches - usable, kChartPatches);
        }
    }
    const Fit fit(charts, gains);
    const std::vector<double> solution = Minimised(
        kElements + static_cast<int>(charts.size()), [&](const double* x) { return fit.Value(x); }, fit.LinearStart());
    ColourFit result{MeanGains(gains), MatrixOf(solution.data()), {}};
    for (size_t chart = 0; chart < charts.size(); ++chart) {
        const double exposure = std::exp(solution[kElements + chart]);
        result.charts.push_back(
            {gains[chart], exposure,
             Errors(charts[chart], gains[chart], cv::Matx33d::eye(), GreyExposure(charts[chart], gains[chart])),
             Errors(charts[chart], gains[chart], result.matrix, exposure)});
    }
    return result;
}

}  // namespace kvx::tool
