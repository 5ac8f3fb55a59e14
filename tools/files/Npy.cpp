#include "tools/files/Npy.h"

#include <fmt/format.h>

#include <charconv>
#include <opencv2/imgproc.hpp>
#include <regex>
#include <string_view>
#include <vector>

#include "tools/ToolError.h"
#include "tools/files/RawFrame.h"
#include "tools/files/RawLayout.h"

namespace kvx::tool {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kSignature = "\x93NUMPY"sv;
/** Headers of simple arrays have 128 bytes. */
constexpr size_t kLongestHeader = 4096;
constexpr size_t kAlignment = 64;

[[noreturn]] void FailDamaged(const std::string& name, const char* reason) {
    Fail(ExitCode::Input, "{}: is a damaged NumPy file: {}", name, reason);
}

std::string_view TextOf(const Bytes& content) {
    return {reinterpret_cast<const char*>(content.data()), content.size()};
}

/** Where the header text ends; it starts after its length, which has two bytes, or four since version 2. */
struct HeaderPlace {
    size_t start;
    size_t end;
};

HeaderPlace FindHeader(const Bytes& content, const std::string& name) {
    const size_t lengthBytes = content.size() > 6 && content[6] == 1 ? 2 : 4;
    const size_t start = kSignature.size() + 2 + lengthBytes;
    size_t length = 0;
    for (size_t at = start; at > start - lengthBytes && start <= content.size(); --at) {
        length = length << 8 | content[at - 1];
    }
    if (start > content.size() || length > content.size() - start) FailDamaged(name, "it ends within its header");
    if (length > kLongestHeader) FailDamaged(name, "its header is too long for a simple array");
    return {start, start + length};
}

/** What matches the group of the pattern. */
std::string Value(const std::string& header, const char* pattern, const std::string& name) {
    std::smatch match;
    if (!std::regex_search(header, match, std::regex(pattern))) {
        FailDamaged(name, "its header lacks descr, fortran_order or shape");
    }
    return match[1];
}

std::vector<uint64_t> ParseShape(const std::string& text) {
    std::vector<uint64_t> shape;
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at != end;) {
        uint64_t side = 0;
        const auto [next, error] = std::from_chars(at, end, side);
        if (error == std::errc::result_out_of_range) side = UINT64_MAX;
        if (next != at) shape.push_back(side);
        at = next == at ? at + 1 : next;
    }
    return shape;
}

}  // namespace

bool IsNpy(const Bytes& content) {
    return TextOf(content).starts_with(kSignature);
}

Picture DecodeNpy(const Bytes& content, const std::string& name) {
    const HeaderPlace place = FindHeader(content, name);
    const std::string header(TextOf(content).substr(place.start, place.end - place.start));
    const std::string type = Value(header, "'descr': *('[^']*'|\\[)", name);
    const bool isBytes = type == "'|u1'", isBigEndian = type == "'>u2'";
    if (!isBytes && !isBigEndian && type != "'<u2'") {
        Fail(ExitCode::Input, "{}: is an array of {}: frames and pictures are uint8 or uint16", name, type);
    }
    const std::vector<uint64_t> shape = ParseShape(Value(header, "'shape': *\\(([0-9, ]*)\\)", name));
    if (shape.size() != 2 && !(shape.size() == 3 && shape[2] == 3)) {
        Fail(ExitCode::Input, "{}: frames have the shape (rows, columns), pictures (rows, columns, 3), not ({})", name,
             fmt::join(shape, ", "));
    }
    if (Value(header, "'fortran_order': *(True|False)", name) == "True") {
        Fail(ExitCode::Input, "{}: is stored column by column: save numpy.ascontiguousarray() of it", name);
    }
    CheckFrameSize(shape[1], shape[0], name);
    const uint64_t rowSamples = shape[1] * (shape.size() == 3 ? 3 : 1);
    const uint64_t rowBytes = rowSamples * (isBytes ? 1 : 2);
    if (content.size() - place.end < rowBytes * shape[0]) FailDamaged(name, "it is too short for its shape");
    const frame::Format format{.bits = isBytes ? uint8_t{8} : uint8_t{16},
                               .layout = isBigEndian ? frame::Layout::BigEndian : frame::Layout::Plain};
    const cv::Mat samples = UnpackFrame({.data = content.data() + place.end,
                                         .width = static_cast<uint32_t>(rowSamples),
                                         .height = static_cast<uint32_t>(shape[0]),
                                         .stride = static_cast<ptrdiff_t>(rowBytes),
                                         .capacity = content.size() - place.end,
                                         .format = format})
                                .samples;
    cv::Mat pixels = samples.reshape(shape.size() == 3 ? 3 : 1);
    if (pixels.channels() == 3) cv::cvtColor(pixels, pixels, cv::COLOR_RGB2BGR);
    return {pixels, isBytes ? 255u : 65535u};
}

Bytes EncodeNpy(const cv::Mat& pixels) {
    const bool isColour = pixels.channels() == 3;
    cv::Mat samples = pixels;
    if (isColour) cv::cvtColor(pixels, samples, cv::COLOR_BGR2RGB);
    std::string header =
        fmt::format("{{'descr': '{}', 'fortran_order': False, 'shape': ({}, {}{}), }}",
                    pixels.depth() == CV_8U ? "|u1" : "<u2", pixels.rows, pixels.cols, isColour ? ", 3" : "");
    const size_t start = kSignature.size() + 4;
    header.resize((start + header.size() + kAlignment) / kAlignment * kAlignment - start - 1, ' ');
    header = std::string(kSignature) + '\1' + '\0' + static_cast<char>(header.size() + 1) + '\0' + header + '\n';
    Bytes content(header.begin(), header.end());
    const Bytes raw = EncodeRaw(samples);
    content.insert(content.end(), raw.begin(), raw.end());
    return content;
}

}  // namespace kvx::tool
