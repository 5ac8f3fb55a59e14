/** One number for a table of many rows, to compare with a literal. */
#pragma once

#include <cstdint>
#include <string_view>

namespace kvx::test {

/** 32-bit FNV-1a. */
constexpr uint32_t ChecksumOf(std::string_view text) {
    uint32_t checksum = 2166136261u;
    for (const char c : text) checksum = (checksum ^ static_cast<uint8_t>(c)) * 16777619u;
    return checksum;
}

}  // namespace kvx::test
