#include "KvxBayer/ipp/Tile.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "KvxBayer/ipp/DifferenceRow.h"
#include "KvxBayer/ipp/Method.h"

namespace kvx::ipp {
namespace {

constexpr size_t kRowColumns = size_t{2} * (kMaxLanes + kLaneBlock);
constexpr size_t kRowBytes = 3 * sizeof(uint16_t) * kRowColumns + KVX_ROW_PADDING;  // pixels of three words

}  // namespace

std::unique_ptr<TileWorker> TileWorker::Create() {
    const size_t floats = TilePlanes(nullptr).carver.Floats();
    auto memory = hwy::AllocateAligned<float>(floats);
    std::unique_ptr<uint8_t[]> rowBytes(new (std::nothrow) uint8_t[kRowBytes]());
    if (!memory || !rowBytes) return nullptr;
    std::fill_n(memory.get(), floats, 0.0f);  // padding is read, and must be numbers
    return std::unique_ptr<TileWorker>(new (std::nothrow) TileWorker(std::move(memory), std::move(rowBytes)));
}

TileWorker::TileWorker(hwy::AlignedFreeUniquePtr<float[]> memory, std::unique_ptr<uint8_t[]> rowBytes)
    : m_memory(std::move(memory)), m_rowBytes(std::move(rowBytes)), m_planes(m_memory.get()) {}

void TileWorker::Compute(const Frame& frame, const TileArea& area) {
    struct Step {
        int lag;           // rows behind the intake
        int above, below;  // rows beyond the tile that later steps need
        void (TileWorker::*run)(int row);
    };
    static constexpr Step steps[] = {
        {kMosaicLag, kReach, kReach, &TileWorker::TakeSamples}, {kDifferenceLag, 16, 16, &TileWorker::FindDifferences},
        {kSmoothLag, 14, 14, &TileWorker::SmoothDifferences},   {kActivityLag, 12, 12, &TileWorker::MeasureActivity},
        {kDirectionLag, 10, 10, &TileWorker::JudgeDirections},  {kGreenLag, 8, 8, &TileWorker::FindGreen},
        {kProductsLag, 8, 6, &TileWorker::MultiplySteps},       {kSlopeLag, 4, 4, &TileWorker::FitSlope},
        {kOtherLag, 3, 3, &TileWorker::FindOtherColour},        {kOutputLag, 0, 0, &TileWorker::WritePixels},
    };
    m_frame = &frame;
    m_area = area;
    m_maximum = static_cast<float>(frame.scale.maximum) * frame.scale.toUnit;
    const int usedLanes = (area.columns + 1) / 2 + 2 * kMarginLanes;
    m_lanes = (usedLanes + kLaneBlock - 1) / kLaneBlock * kLaneBlock;
    for (int intake = 0; intake < area.rows + 2 * kReach; ++intake)
        for (const Step& step : steps) {
            const int row = intake - step.lag;
            if (row >= kReach - step.above && row < kReach + area.rows + step.below) (this->*step.run)(row);
        }
}

int TileWorker::Phase(int row) const {
    return m_frame->source.Phase(row);  // kReach and the tile's first row are even
}

void TileWorker::TakeSamples(int row) {
    m_frame->source.CopyRow(m_area.firstRow + row - kReach, m_area.firstColumn - 2 * kMarginLanes, 2 * m_lanes,
                            m_rowBytes.get());
    UnpackRow(m_rowBytes.get(), m_frame->scale, m_lanes, m_planes.mosaic[row]);
}

void TileWorker::FindDifferences(int row) {
    const PairRing& mosaic = m_planes.mosaic;
    const PairRow rows[5] = {mosaic[row - 2], mosaic[row - 1], mosaic[row], mosaic[row + 1], mosaic[row + 2]};
    DifferenceRow(rows, Phase(row), m_lanes, m_planes.horizontal[row], m_planes.vertical[row]);
}

void TileWorker::SmoothDifferences(int row) {
    const PairRing& vertical = m_planes.vertical;
    const PairRow rows[5] = {vertical[row - 2], vertical[row - 1], vertical[row], vertical[row + 1], vertical[row + 2]};
    SmoothRow(rows, Phase(row), m_lanes, m_planes.smooth[row]);
}

void TileWorker::MeasureActivity(int row) {
    HorizontalActivityRow(m_planes.horizontal[row], Phase(row), m_lanes, m_planes.smoothAlongRow[0],
                          m_planes.horizontalActivity[row]);
    const PairRing& vertical = m_planes.vertical;
    const PairRow differences[3] = {vertical[row - 1], vertical[row], vertical[row + 1]};
    const float* const smooth[3] = {m_planes.smooth[row - 2], m_planes.smooth[row], m_planes.smooth[row + 2]};
    VerticalActivityRow(differences, smooth, Phase(row), m_lanes, m_planes.verticalActivity[row]);
}

void TileWorker::JudgeDirections(int row) {
    const auto judge = [&](const ActivityRing& activity, const Direction& direction) {
        const Activity rows[5] = {activity[row - 2], activity[row - 1], activity[row], activity[row + 1],
                                  activity[row + 2]};
        DirectionRow(rows, Phase(row), m_lanes, m_planes.evenSums[0], m_planes.betweenSums[0], direction);
    };
    judge(m_planes.horizontalActivity, m_planes.alongRow[row]);
    judge(m_planes.verticalActivity, m_planes.downColumns[row]);
}

void TileWorker::FindGreen(int row) {
    const int phase = Phase(row);
    GreenInput input{m_planes.mosaic[row].Colour(phase), m_planes.horizontal[row],      {},    m_planes.alongRow[row],
                     m_planes.downColumns[row - 2],      m_planes.downColumns[row + 2], phase, m_maximum};
    for (int i = 0; i < 9; ++i) input.vertical[i] = m_planes.vertical[row - 4 + i].Colour(phase);
    GreenRow(input, m_lanes, m_planes.green[row], m_planes.own[row]);
}

void TileWorker::MultiplySteps(int row) {
    const int phase = Phase(row);
    StepProductsRow({m_planes.green[row], m_planes.mosaic[row].Colour(phase)},
                    {m_planes.green[row + 2], m_planes.mosaic[row + 2].Colour(phase)}, m_lanes,
                    m_planes.scratchProducts[0], m_planes.products[row]);
}

// NOLINTNEXTLINE(readability-make-member-function-const): a step like the others
void TileWorker::FitSlope(int row) {
    const StepProducts rows[4] = {m_planes.products[row - 4], m_planes.products[row - 2], m_planes.products[row],
                                  m_planes.products[row + 2]};
    SlopeRow(rows, m_lanes, m_planes.slope[row]);
}

ColourRowData TileWorker::ColourData(int row) const {
    return {m_planes.green[row], m_planes.own[row], m_planes.other[row], m_planes.slope[row]};
}

void TileWorker::FindOtherColour(int row) {
    const ColourRowData rows[5] = {ColourData(row - 3), ColourData(row - 1), ColourData(row), ColourData(row + 1),
                                   ColourData(row + 3)};
    OtherColourRow(rows, Phase(row), m_maximum, m_lanes, m_planes.other[row]);
}

void TileWorker::WritePixels(int row) {
    const ColourRowData rows[5] = {ColourData(row - 3), ColourData(row - 1), ColourData(row), ColourData(row + 1),
                                   ColourData(row + 3)};
    const int phase = Phase(row);
    const PairRow mosaic = m_planes.mosaic[row];
    PairRow own = m_planes.ownChannel[0], other = m_planes.otherChannel[0], green = mosaic;
    ColoursAtGreenRow(rows, mosaic.Green(phase), phase, m_lanes,
                      {own.Green(phase), other.Green(phase), other.Colour(phase)});
    (phase == 0 ? own.even : own.odd) = mosaic.Colour(phase);
    (phase == 0 ? green.even : green.odd) = m_planes.green[row];

    const bool ownIsBlue = m_frame->source.blueOnTop == (row % 2 == 0);
    const bool ownIsFirst = ownIsBlue == (m_frame->job.order == ChannelOrder::BGR);
    const PairRow channels[3] = {ownIsFirst ? own : other, green, ownIsFirst ? other : own};
    const int frameRow = m_area.firstRow + row - kReach;
    if (m_frame->job.exchange)
        WritePlanes(channels, frameRow);
    else
        Store(channels, frameRow);
}

/** The order of such a job is red-first. */
void TileWorker::WritePlanes(const PairRow channels[3], int frameRow) {
    auto* const words = reinterpret_cast<uint16_t*>(m_rowBytes.get());
    uint16_t* const planes[3] = {words, words + kRowColumns, words + size_t{2} * kRowColumns};
    PackPlanes(channels, kMarginLanes, (m_area.columns + 1) / 2, m_frame->scale, planes);
    m_frame->job.exchange->Write(static_cast<uint32_t>(frameRow), static_cast<uint32_t>(m_area.firstColumn),
                                 static_cast<uint32_t>(m_area.columns), planes);
}

void TileWorker::Store(const PairRow channels[3], int frameRow) {
    const BayerJob& job = m_frame->job;
    const bool words = job.OutputSampleSize() == 2;
    const auto bytesOf = [&](int columns) { return static_cast<size_t>(columns) * job.PixelBytes(); };
    const auto pack = [&](int firstLane, int lanes, uint8_t* to) {
        PackRow(channels, kMarginLanes + firstLane, lanes, m_frame->scale, job.output, to);
    };
    uint8_t* const rowStart = static_cast<uint8_t*>(job.destination) + frameRow * job.destinationStep;
    uint8_t* const out = rowStart + bytesOf(m_area.firstColumn);
    // Whole blocks go straight into the picture; what would overrun the tile goes through our own memory.
    const bool isAligned = reinterpret_cast<uintptr_t>(rowStart) % 2 == 0;
    const int wholeLanes = !words || isAligned ? m_area.columns / 2 / kLaneBlock * kLaneBlock : 0;
    pack(0, wholeLanes, out);
    const int restColumns = m_area.columns - 2 * wholeLanes;
    pack(wholeLanes, (restColumns + 1) / 2, m_rowBytes.get());
    std::memcpy(out + bytesOf(2 * wholeLanes), m_rowBytes.get(), bytesOf(restColumns));
    const bool lastOfRow = m_area.firstColumn + m_area.columns == static_cast<int>(job.size.width);
    if (lastOfRow)
        std::memset(rowStart + job.PictureBytes(), 0, static_cast<size_t>(job.WrittenBytes() - job.PictureBytes()));
}

}  // namespace kvx::ipp
