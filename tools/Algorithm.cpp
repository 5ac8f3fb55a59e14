#include "tools/Algorithm.h"

#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <vector>

#include "KvxDemosaicing/KvxBayer.h"
#include "KvxDemosaicing/KvxTrueSense.h"
#include "tools/ToolError.h"

namespace kvx::tool {
namespace {

constexpr std::array<NamedAlgorithm, 3> kBayerNames = {{{"bilinear", KvxBayerAlgorithm_Bilinear},
                                                        {"ipp", KvxBayerAlgorithm_IPP},
                                                        {"edge-aware", KvxBayerAlgorithm_EdgeAware}}};
constexpr std::array<NamedAlgorithm, 2> kTrueSenseNames = {
    {{"fast", KvxTrueSenseAlgorithm_Fast}, {"bayer-like", KvxTrueSenseAlgorithm_BayerLike}}};

}  // namespace

const AlgorithmFamily kBayerAlgorithms = {"BayerAlgType", kBayerNames, 4};
const AlgorithmFamily kTrueSenseAlgorithms = {"TrueSenseAlgType", kTrueSenseNames, 6};

int64_t ParseAlgorithm(const AlgorithmFamily& family, const std::string& text) {
    std::vector<const char*> names;
    for (const NamedAlgorithm& algorithm : family.named) {
        if (text == algorithm.name) {
            return algorithm.number;
        }
        names.push_back(algorithm.name);
    }
    if (text.size() == 1 && text[0] >= '0' && text[0] - '0' <= family.largest) {
        return text[0] - '0';
    }
    Fail(ExitCode::Usage, "--algorithm: '{}' is unknown for such frames: give {} or a number from 0 to {}", text,
         fmt::join(names, ", "), family.largest);
}

std::string AlgorithmName(const AlgorithmFamily& family, int64_t number) {
    const auto found = std::find_if(family.named.begin(), family.named.end(),
                                    [number](const NamedAlgorithm& algorithm) { return algorithm.number == number; });
    return found == family.named.end() ? std::to_string(number) : found->name;
}

}  // namespace kvx::tool
