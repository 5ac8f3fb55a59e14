#include "frame/learned/fine/FineInterpolator.h"

#include <algorithm>

#include "frame/base/Team.h"
#include "frame/learned/fine/BayerBase.h"
#include "frame/learned/fine/NetworkStrip.h"
#include "frame/learned/fine/PictureRows.h"

namespace kvx::frame {
namespace {

constexpr size_t kStripCells = 192;   // the rows that a strip keeps stay in the second-level cache
constexpr uint32_t kBandCells = 192;  // rows of cells of a band: those above and below are computed twice

/** Planes of a cell whose mean is its signal: the clear sites; of a Bayer cell's picture, the measured samples. */
std::span<const uint8_t> MeasuredPlanes(Family family) {
    static constexpr uint8_t kTrueSense[] = {0, 2, 5, 7, 8, 10, 13, 15}, kBayer[] = {0, 4, 7, 11};
    return family == Family::Bayer ? std::span<const uint8_t>(kBayer) : std::span<const uint8_t>(kTrueSense);
}

CellSource SourceOf(const SourceView& mosaic, const KvxRowSource& rows, size_t side) {
    return {.rows = rows,
            .width = mosaic.width,
            .height = mosaic.height,
            .channels = 1,
            .bits = mosaic.format.bits,
            .side = side,
            .rowPhase = static_cast<int64_t>(mosaic.format.phase / side),
            .columnPhase = static_cast<int64_t>(mosaic.format.phase % side),
            .isUpwards = mosaic.verMirrored,
            .isReversed = mosaic.horMirrored};
}

}  // namespace

/** One thread's memory. */
class FineInterpolator::Worker {
public:
    Worker(const Network& network, Family family)
        : m_network(network),
          m_strip(network, kStripCells),
          m_writer(network, kStripCells),
          m_measured(MeasuredPlanes(family)) {
        if (family == Family::Bayer) m_bayer.emplace();
    }

    bool Runs(const Network& network) const {
        return &network == &m_network;
    }

    /** Allocates what bands of so many rows of cells need, an even number. @return the library's result */
    uint32_t Prepare(const SourceView& mosaic, const KvxRowSource& rows, uint32_t count) {
        const size_t cells = count + 2 * m_network.Halo();
        return m_bayer ? m_bayer->Prepare(mosaic, rows, cells * m_network.side) : 0;
    }

    /** Rows of cells `top` to `bottom` - 1. @return the library's result */
    uint32_t Band(const SourceView& mosaic, const KvxRowSource& rows, const NoiseDeviation* noise,
                  const PictureRows& picture, int64_t top, int64_t bottom) {
        CellSource source = SourceOf(mosaic, rows, m_network.side);
        const auto side = static_cast<int64_t>(m_network.side);
        if (m_bayer) {
            const auto halo = static_cast<int64_t>(m_network.Halo());
            const int64_t end = bottom + (bottom - top) % 2 + halo;  // the strip computes two rows at once
            const uint32_t result = m_bayer->Interpolate(mosaic, rows, (top - halo) * side, end * side);
            if (result != 0) return result;
            source.rows = m_bayer->Picture();
            source.channels = 3;
            source.bits = 16;
        }
        const size_t columns =
            (mosaic.width + mosaic.format.phase % m_network.side + m_network.side - 1) / m_network.side;
        for (size_t left = 0; left < columns; left += kStripCells) {
            const size_t cells = std::min(kStripCells, columns - left);
            const int64_t column = static_cast<int64_t>(left) * side - source.columnPhase;
            m_strip.Run(source, noise, m_measured, {top, bottom, static_cast<int64_t>(left), cells},
                        [&](int64_t row, const uint16_t* words, const int16_t* input) {
                            m_writer.Write(picture, {words, input, cells, row * side - source.rowPhase, column});
                        });
        }
        return 0;
    }

private:
    const Network& m_network;
    NetworkStrip m_strip;
    PictureWriter m_writer;
    std::span<const uint8_t> m_measured;
    std::optional<BayerBase> m_bayer;
};

FineInterpolator::FineInterpolator(Family family) : m_family(family) {}
FineInterpolator::~FineInterpolator() = default;

void FineInterpolator::Release() noexcept {
    m_workers.clear();
}

uint32_t FineInterpolator::Convert(const SourceView& mosaic, const KvxRowSource& source, uint8_t pictureBits,
                                   const KvxPixelSink& pixels, const std::optional<NoiseLine>& noise, int threads) {
    const Network& network = NetworkFor(m_family, noise.has_value());
    std::optional<NoiseDeviation> deviation;
    if (noise) deviation.emplace(*noise);
    const auto rows =
        static_cast<uint32_t>((mosaic.height + mosaic.format.phase / network.side + network.side - 1) / network.side);
    uint32_t bands = (rows + kBandCells - 1) / kBandCells;
    const int team = TeamSize(bands, threads);
    bands = (bands + team - 1) / team * team;                            // as many for each thread
    const uint32_t bandRows = (rows + 2 * bands - 1) / (2 * bands) * 2;  // strips compute two rows at once

    if (!m_workers.empty() && !m_workers.front()->Runs(network)) m_workers.clear();
    while (m_workers.size() < static_cast<size_t>(team))
        m_workers.push_back(std::make_unique<Worker>(network, m_family));
    for (int thread = 0; thread < team; ++thread)
        if (const uint32_t result = m_workers[thread]->Prepare(mosaic, source, bandRows); result != 0) return result;

    const PictureRows out{.sink = pixels,
                          .width = mosaic.width,
                          .height = mosaic.height,
                          .sampleBits = std::max(mosaic.format.bits, pictureBits),
                          .bits = pictureBits,
                          .isUpwards = mosaic.verMirrored,
                          .isReversed = mosaic.horMirrored};
    uint32_t result = 0;
    ForRows(bands, team, [&](uint32_t band, int thread) {
        const uint32_t top = band * bandRows, bottom = std::min(rows, top + bandRows);
        if (top >= bottom) return;
        const NoiseDeviation* const noiseOrNull = deviation ? &*deviation : nullptr;
        const uint32_t bandResult = m_workers[thread]->Band(mosaic, source, noiseOrNull, out, top, bottom);
        if (bandResult != 0) {
#pragma omp atomic write
            result = bandResult;
        }
    });
    return result;
}

}  // namespace kvx::frame
