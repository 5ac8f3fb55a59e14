#include "tools/files/Pnm.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "tools/ToolError.h"
#include "tools/files/RawLayout.h"

namespace kvx::tool {
namespace {

/** Reads the decimal numbers of a header or of plain samples. */
class NumberReader {
public:
    NumberReader(const Bytes& content, size_t start)
        : m_begin(reinterpret_cast<const char*>(content.data())),
          m_next(m_begin + start),
          m_end(m_begin + content.size()) {}

    /** The next number; white space or a comment must come before it. */
    std::optional<uint64_t> Next() {
        const char* start = m_next;
        while (m_next != m_end && (IsSpace() || *m_next == '#')) {
            m_next = *m_next == '#' ? std::find(m_next, m_end, '\n') : m_next + 1;
        }
        uint64_t number = 0;
        const auto [stop, error] = std::from_chars(m_next, m_end, number);
        if (m_next == start || error != std::errc()) {
            return std::nullopt;
        }
        m_next = stop;
        return number;
    }

    bool IsSpace() const {
        return m_next != m_end && std::isspace(static_cast<unsigned char>(*m_next)) != 0;
    }

    size_t Position() const {
        return m_next - m_begin;
    }

private:
    const char* m_begin;
    const char* m_next;
    const char* m_end;
};

[[noreturn]] void FailDamaged(const std::string& name, const std::string& reason) {
    Fail(ExitCode::Input, "{}: is damaged: {}", name, reason);
}

uint32_t CheckedSample(std::optional<uint64_t> sample, const PnmHeader& header, const std::string& name) {
    if (!sample) {
        FailDamaged(name, "it ends before its last sample, or one is not a number");
    }
    if (*sample > header.maximum) {
        FailDamaged(name, fmt::format("a sample is {}, above its maximum of {}", *sample, header.maximum));
    }
    return static_cast<uint32_t>(*sample);
}

/** The samples in file order, widened. */
class SampleReader {
public:
    SampleReader(const Bytes& content, const PnmHeader& header)
        : m_content(content),
          m_isPlain(header.isPlain),
          m_isWide(header.maximum > 255),
          m_next(header.headerBytes),
          m_numbers(content, header.headerBytes - 1) {}

    std::optional<uint64_t> Next() {
        if (m_isPlain) {
            return m_numbers.Next();
        }
        const size_t position = m_next;
        m_next += m_isWide ? 2 : 1;
        if (m_next > m_content.size()) {
            return std::nullopt;
        }
        return m_isWide ? m_content[position] << 8 | m_content[position + 1] : m_content[position];
    }

private:
    const Bytes& m_content;
    bool m_isPlain;
    bool m_isWide;
    size_t m_next;
    NumberReader m_numbers;
};

template <typename Sample>
void FillSamples(cv::Mat& pixels, SampleReader reader, const PnmHeader& header, const std::string& name) {
    for (int row = 0; row < pixels.rows; ++row) {
        auto* samples = pixels.ptr<Sample>(row);
        for (int column = 0; column < pixels.cols; ++column) {
            // Files are red first, pictures in memory blue first.
            for (int channel = header.channels - 1; channel >= 0; --channel) {
                const uint32_t sample = CheckedSample(reader.Next(), header, name);
                samples[column * header.channels + channel] = static_cast<Sample>(sample);
            }
        }
    }
}

}  // namespace

std::optional<PnmHeader> ParsePnmHeader(const Bytes& content) {
    if (content.size() < 2 || content[0] != 'P' || content[1] == 0 ||
        std::string("2356").find(static_cast<char>(content[1])) == std::string::npos) {
        return std::nullopt;
    }
    NumberReader reader(content, 2);
    const std::optional<uint64_t> width = reader.Next();
    const std::optional<uint64_t> height = reader.Next();
    const std::optional<uint64_t> maximum = reader.Next();
    if (!width || !height || !maximum || *maximum == 0 || *maximum > 65535 || !reader.IsSpace()) {
        return std::nullopt;
    }
    const bool isPlain = content[1] < '5';
    const int channels = content[1] == '2' || content[1] == '5' ? 1 : 3;
    return PnmHeader{channels, isPlain, *width, *height, static_cast<uint32_t>(*maximum), reader.Position() + 1};
}

Picture DecodePnm(const Bytes& content, const PnmHeader& header, const std::string& name) {
    CheckFrameSize(header.width, header.height, name);
    // Each sample takes at least a byte: this finds a false size before memory is allocated for it.
    if ((content.size() - header.headerBytes) / header.channels < header.width * header.height) {
        FailDamaged(name, fmt::format("it is too short for its {}x{} pixels", header.width, header.height));
    }
    const int depth = header.maximum > 255 ? CV_16U : CV_8U;
    cv::Mat pixels(static_cast<int>(header.height), static_cast<int>(header.width),
                   CV_MAKETYPE(depth, header.channels));
    const auto fill = depth == CV_16U ? FillSamples<uint16_t> : FillSamples<uint8_t>;
    fill(pixels, SampleReader(content, header), header, name);
    return {pixels, header.maximum};
}

Bytes EncodePnm(const Picture& picture) {
    Bytes content;
    EncodePnm(picture,
              [&](const uint8_t* piece, size_t bytes) { content.insert(content.end(), piece, piece + bytes); });
    return content;
}

void EncodePnm(const Picture& picture, const ContentSink& sink) {
    constexpr size_t kPieceBytes = 1 << 20;  // of samples: there is no second picture in memory
    const cv::Mat& pixels = picture.pixels;
    const bool isWide = picture.maximum > 255;
    const std::string header =
        fmt::format("P{}\n{} {}\n{}\n", pixels.channels() == 3 ? 6 : 5, pixels.cols, pixels.rows, picture.maximum);
    sink(reinterpret_cast<const uint8_t*>(header.data()), header.size());
    const size_t rowBytes = size_t(pixels.cols) * pixels.channels() * (isWide ? 2 : 1);
    const int pieceRows = static_cast<int>(std::max(kPieceBytes / rowBytes, size_t{1}));
    cv::Mat rows;
    for (int first = 0; first < pixels.rows; first += pieceRows) {
        const int end = std::min(first + pieceRows, pixels.rows);
        pixels.rowRange(first, end).convertTo(rows, isWide ? CV_16U : CV_8U);
        if (rows.channels() == 3) cv::cvtColor(rows, rows, cv::COLOR_BGR2RGB);
        const size_t bytes = rowBytes * (end - first);
        for (size_t i = 0; isWide && i < bytes; i += 2) std::swap(rows.data[i], rows.data[i + 1]);  // big-endian
        sink(rows.data, bytes);
    }
}

}  // namespace kvx::tool
