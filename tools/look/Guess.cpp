#include "tools/look/Guess.h"

#include <algorithm>
#include <cmath>

#include "tools/look/TileAnalysis.h"

namespace kvx::tool {
namespace {

/** Below this, the sites of a tile differ by less than 1 %: practically grey. */
constexpr double kLeastContrast = 0.01;
/** Lead in score of the best mosaic over the next one that is not its exchange of red and blue. */
constexpr double kLeastLead = 0.05;

/** Scores are compared, and shown, in hundredths of a per cent. */
double Rounded(double score) {
    return std::round(score * 1e4) / 1e4;
}

std::vector<frame::Format> MosaicsOf(const frame::Format& layout) {
    std::vector<frame::Format> formats;
    for (const auto family : {frame::Family::Bayer, frame::Family::TrueSense}) {
        for (int phase = 0; phase < (family == frame::Family::Bayer ? 4 : 16); ++phase) {
            const frame::Format format{family, layout.bits, layout.layout, static_cast<uint8_t>(phase)};
            if (frame::IsSource(format) && frame::IsValid(format)) {
                formats.push_back(format);
            }
        }
    }
    return formats;
}

void AddGuesses(const LayoutCandidate& candidate, const TileAnalysis& analysis, std::vector<Guess>& guesses) {
    const double continuity = Rounded(std::max(0.0, candidate.continuity));
    double largest = 0;
    const auto add = [&](const frame::Format& format, double explained, double warmth) {
        guesses.push_back({format, candidate.samples, Rounded(continuity * explained), continuity, explained, warmth});
    };
    for (const frame::Format& format : MosaicsOf(candidate.layout)) {
        const double explained = Rounded(std::max(0.0, analysis.Explained(format)));
        add(format, explained, analysis.Warmth(format));
        largest = std::max(largest, explained);
    }
    add(candidate.layout, Rounded((1 - largest) * analysis.Evenness()), 0);
}

bool IsBefore(const Guess& a, const Guess& b) {
    return a.score != b.score ? a.score > b.score : a.warmth > b.warmth;
}

}  // namespace

Guesses RankFormats(const std::vector<LayoutCandidate>& candidates) {
    Guesses guesses{{}, false};
    std::vector<Guess>& ranking = guesses.ranking;
    double contrast = 0;
    for (const LayoutCandidate& candidate : candidates) {
        const TileAnalysis analysis(candidate.samples);
        if (&candidate == &candidates.front()) {
            contrast = analysis.Contrast();
        }
        AddGuesses(candidate, analysis, ranking);
    }
    std::stable_sort(ranking.begin(), ranking.end(), IsBefore);
    // The second place is the first with red and blue exchanged if the pattern is known.
    guesses.isPatternKnown = contrast >= kLeastContrast && ranking.size() > 2 &&
                             ranking[0].format.family != frame::Family::Mono && ranking[1].score == ranking[0].score &&
                             ranking[0].score - ranking[2].score >= kLeastLead;
    return guesses;
}

}  // namespace kvx::tool
