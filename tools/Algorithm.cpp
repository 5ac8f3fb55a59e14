#include "tools/Algorithm.h"

#include <algorithm>

#include "tools/ToolError.h"

namespace kvx::tool {

int64_t ParseAlgorithm(const std::string& text) {
    for (const NamedAlgorithm& algorithm : kAlgorithms) {
        if (text == algorithm.name) {
            return algorithm.number;
        }
    }
    // 3 and 4 have no names but are values that the component takes.
    if (text.size() == 1 && text[0] >= '0' && text[0] <= '4') {
        return text[0] - '0';
    }
    Fail(ExitCode::Usage, "--algorithm: '{}' is unknown: give bilinear, ipp, edge-aware or a number from 0 to 4", text);
}

std::string AlgorithmName(int64_t number) {
    const auto found = std::find_if(kAlgorithms.begin(), kAlgorithms.end(),
                                    [number](const NamedAlgorithm& algorithm) { return algorithm.number == number; });
    return found == kAlgorithms.end() ? std::to_string(number) : found->name;
}

}  // namespace kvx::tool
