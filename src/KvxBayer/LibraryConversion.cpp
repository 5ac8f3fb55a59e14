#include "KvxBayer/LibraryConversion.h"

#include <omp.h>

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstring>
#include <new>
#include <opencv2/imgproc.hpp>
#include <vector>

#include "KvxBayer/Rows.h"
#include "KvxDemosaicing/KvxResult.h"
#include "framework/PixelFormats.h"

namespace kvx {
namespace {

constexpr int kChannels = 3;

/** Library failures and missing memory become codes; nothing else is thrown below. */
template <class Body>
uint32_t Guarded(const Body& body) noexcept {
    try {
        body();
        return KvxResult_Success;
    } catch (const std::bad_alloc&) {
        return KvxResult_NoMemory;
    } catch (...) {
        return KvxResult_ConversionFailed;
    }
}

/** The code for the frame without its first row: GR and BG change places, RG and GB do. */
int OneRowDown(int code) {
    return (IsEdgeAware(code) ? cv::COLOR_BayerBG2BGR_EA + cv::COLOR_BayerGR2BGR_EA
                              : cv::COLOR_BayerBG2BGR + cv::COLOR_BayerGR2BGR) -
           code;
}

/** Working memory of the calling thread, kept for its next frame. */
uint8_t* Scratch(size_t bytes) {
    thread_local std::vector<uint8_t> memory;
    if (memory.size() < bytes) {
        memory.clear();  // nothing to keep, so nothing to copy
        memory.resize(bytes);
    }
    return memory.data();
}

/** One frame's conversion: what to convert, and whether and how it is cut into bands. */
class Conversion {
public:
    Conversion(const _KvxImage& src, const _KvxImage& dst, int code, const BayerOutput& output)
        : m_source(RowsOf(src)),
          m_destination(RowsOf(dst)),
          m_width(static_cast<int>(src.width)),
          m_height(static_cast<int>(src.height)),
          m_code(code),
          m_output(output),
          m_sampleSize(Is8Bit(src.pixelType) ? 1 : 2),
          m_sourceRowBytes(size_t{src.width} * m_sampleSize),
          m_resultRowBytes(m_sourceRowBytes * kChannels) {}

    uint32_t Run() const noexcept {
        return IsDirect() ? Guarded([&] { Convert(m_source, m_destination, m_height, m_code); }) : RunInBands();
    }

private:
    int Type(int channels) const {
        return CV_MAKETYPE(m_sampleSize == 1 ? CV_8U : CV_16U, channels);
    }

    void Convert(const Rows& from, const Rows& to, int rows, int code) const {
        const cv::Mat source(rows, m_width, Type(1), from.data, from.step);
        cv::Mat result(rows, m_width, Type(kChannels), to.data, to.step);
        cv::cvtColor(source, result, code, 0);
    }

    /** The edge-aware conversion takes every row to start where the one above ends, and overwrites what lies between.
     */
    bool SourceIsUsable() const {
        return m_source.IsAligned(m_sampleSize) && (!IsEdgeAware(m_code) || m_source.step == m_sourceRowBytes);
    }
    bool DestinationIsUsable() const {
        return m_destination.IsAligned(m_sampleSize) &&
               (!IsEdgeAware(m_code) || m_destination.step == m_resultRowBytes);
    }
    bool IsDirect() const {
        const bool fitsIndices =
            m_destination.step * static_cast<uint64_t>(m_height) <= INT_MAX;  // the library's are int
        return m_output.form == BayerOutput::Samples && SourceIsUsable() && DestinationIsUsable() && fitsIndices;
    }

    /**
     * A band's result is right but for its first and last row, which the library fills with the rows next to them. So
     * bands overlap by two rows, and only at the frame's own border are those rows kept.
     */
    struct Band {
        int sourceBegin, sourceEnd;  // rows that are converted
        int begin, end;              // rows that are kept
    };
    Band BandAt(int index, int rowsPerBand) const {
        const int sourceBegin = index * rowsPerBand;
        const int sourceEnd = sourceBegin + std::min(rowsPerBand + 2, m_height - sourceBegin);
        return {sourceBegin, sourceEnd, index == 0 ? 0 : sourceBegin + 1,
                sourceEnd == m_height ? m_height : sourceEnd - 1};
    }

    uint32_t RunInBands() const noexcept {
        constexpr size_t bandBytes = 1 << 18;  // of converted samples: they are read again while in the L2 cache
        constexpr size_t page = 4096;          // apart from each other, so that threads do not share lines
        const int innerRows = std::max(m_height - 2, 1);
        const int rowsPerBand = static_cast<int>(std::max<size_t>(bandBytes / m_resultRowBytes, 2));
        const int bands = (innerRows - 1) / rowsPerBand + 1;
        const size_t rows = static_cast<size_t>(rowsPerBand) + 2;
        const size_t resultBytes = (rows * m_resultRowBytes + page - 1) / page * page;
        const size_t sourceBytes = SourceIsUsable() ? 0 : (rows * m_sourceRowBytes + page - 1) / page * page;
        const int threads = std::min(omp_get_max_threads(), bands);

        uint8_t* scratch = nullptr;
        const uint32_t result =
            Guarded([&] { scratch = Scratch((resultBytes + sourceBytes) * static_cast<size_t>(threads)); });
        if (result != KvxResult_Success) return result;

        std::atomic<uint32_t> failure{KvxResult_Success};
#pragma omp parallel for num_threads(threads) schedule(dynamic) default(none) \
    shared(bands, rowsPerBand, scratch, resultBytes, sourceBytes, failure)
        for (int index = 0; index < bands; ++index) {
            uint8_t* memory = scratch + (resultBytes + sourceBytes) * static_cast<size_t>(omp_get_thread_num());
            const uint32_t code = Guarded([&] { RunBand(BandAt(index, rowsPerBand), memory, memory + resultBytes); });
            if (code != KvxResult_Success) failure = code;
        }
        return failure;
    }

    void RunBand(const Band& band, uint8_t* resultMemory, uint8_t* sourceMemory) const {
        const int rows = band.sourceEnd - band.sourceBegin;
        Rows source{m_source[band.sourceBegin], m_source.step};
        if (!SourceIsUsable()) {
            source = {sourceMemory, m_sourceRowBytes};
            for (int row = 0; row < rows; ++row)
                std::memcpy(source[row], m_source[band.sourceBegin + row], m_sourceRowBytes);
        }
        const Rows result{resultMemory, m_resultRowBytes};
        Convert(source, result, rows, band.sourceBegin % 2 ? OneRowDown(m_code) : m_code);
        Store(band, {result[band.begin - band.sourceBegin], result.step});
    }

    void Store(const Band& band, const Rows& result) const {
        const int rows = band.end - band.begin;
        const Rows destination{m_destination[band.begin], m_destination.step};
        switch (m_output.form) {
            case BayerOutput::Samples:
                for (int row = 0; row < rows; ++row) std::memcpy(destination[row], result[row], m_resultRowBytes);
                return;
            case BayerOutput::RoundedBytes: {
                cv::Mat bytes(rows, m_width, CV_8UC3, destination.data, destination.step);
                cv::Mat(rows, m_width, CV_16UC3, result.data, result.step)
                    .convertTo(bytes, CV_8U, 1.0 / (1 << m_output.shift));
                return;
            }
            case BayerOutput::ShiftedBytes:
                for (int row = 0; row < rows; ++row) {
                    StoreShifted(reinterpret_cast<const uint16_t*>(result[row]), destination[row]);
                    ClearSlots(m_output, destination, row, static_cast<size_t>(m_width));
                }
                return;
        }
    }

    void StoreShifted(const uint16_t* samples, uint8_t* bytes) const {
        const size_t count = size_t{kChannels} * static_cast<size_t>(m_width);
        const int shift = m_output.shift;  // a local copy, which the stores below cannot change: the loop vectorises
        for (size_t i = 0; i < count; ++i) bytes[i] = static_cast<uint8_t>(samples[i] >> shift);
    }

    Rows m_source, m_destination;
    int m_width, m_height;
    int m_code;
    BayerOutput m_output;
    size_t m_sampleSize;
    size_t m_sourceRowBytes, m_resultRowBytes;  // without padding
};

}  // namespace

bool IsEdgeAware(int code) {
    return code >= cv::COLOR_BayerBG2BGR_EA && code <= cv::COLOR_BayerGR2BGR_EA;
}

uint32_t ConvertByLibrary(const _KvxImage& src, const _KvxImage& dst, int code, const BayerOutput& output) noexcept {
    return Conversion(src, dst, code, output).Run();
}

}  // namespace kvx
