#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "KvxDemosaicing/KvxBayer.h"

namespace kvx::tool {

struct NamedAlgorithm {
    const char* name;
    int64_t number;  ///< value of the parameter "BayerAlgType"
};

constexpr std::array<NamedAlgorithm, 3> kAlgorithms = {{{"bilinear", KvxBayerAlgorithm_Bilinear},
                                                        {"ipp", KvxBayerAlgorithm_IPP},
                                                        {"edge-aware", KvxBayerAlgorithm_EdgeAware}}};

/** A name from the table above, or the number itself. Throws ExitCode::Usage. */
int64_t ParseAlgorithm(const std::string& text);

/** For messages: the name, or the number where there is none. */
std::string AlgorithmName(int64_t number);

}  // namespace kvx::tool
