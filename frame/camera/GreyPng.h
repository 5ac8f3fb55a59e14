/** Grey 16-bit PNG files. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kvx::frame {

/** The samples of a grey 16-bit file of this size. @param path for messages. @throws Error 0x80070007 */
std::vector<uint16_t> DecodeGreyPng(const std::string& content, uint32_t width, uint32_t height,
                                    const std::string& path);

/** @throws Error 0x80070001 */
std::string EncodeGreyPng(const std::vector<uint16_t>& samples, uint32_t width, uint32_t height);

}  // namespace kvx::frame
