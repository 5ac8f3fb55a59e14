#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace kvx::tool {

struct NamedAlgorithm {
    const char* name;
    int64_t number;  ///< value of the family's parameter
};

/** The algorithms of one sensor family. */
struct AlgorithmFamily {
    const char* parameter;                  ///< of the component
    std::span<const NamedAlgorithm> named;  ///< those that the library has
    int64_t largest;                        ///< of the parameter's range: some values have no name
};

extern const AlgorithmFamily kBayerAlgorithms;
extern const AlgorithmFamily kTrueSenseAlgorithms;

/** A name of the family, or a number of its range. Throws ExitCode::Usage. */
int64_t ParseAlgorithm(const AlgorithmFamily& family, const std::string& text);

/** For messages: the name, or the number where there is none. */
std::string AlgorithmName(const AlgorithmFamily& family, int64_t number);

}  // namespace kvx::tool
