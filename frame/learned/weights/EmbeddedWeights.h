/** The files of this folder, as bytes of the library. */
#pragma once

#include <cstdint>
#include <span>

namespace kvx::frame {

std::span<const uint8_t> BayerFineWeights();
std::span<const uint8_t> BayerFineNoiseWeights();
std::span<const uint8_t> BayerSwiftWeights();
std::span<const uint8_t> TrueSenseFineWeights();
std::span<const uint8_t> TrueSenseFineNoiseWeights();
std::span<const uint8_t> TrueSenseSwiftWeights();

}  // namespace kvx::frame
