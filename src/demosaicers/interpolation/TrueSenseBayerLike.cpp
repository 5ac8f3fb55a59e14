#include "demosaicers/interpolation/TrueSenseBayerLike.h"

#include <algorithm>
#include <cstring>
#include <opencv2/imgproc.hpp>

#include "demosaicers/frame/PixelWriter.h"
#include "demosaicers/interpolation/HalfMosaic.h"
#include "demosaicers/interpolation/TrueSenseBand.h"

namespace kvx {
namespace {

/** Whatever the image-processing library throws means that it could not do its part. */
template <class Body>
int Guarded(const Body& body) noexcept {
    try {
        body();
        return KvxResult_Success;
    } catch (...) {
        return KvxResult_NoMemory;
    }
}

}  // namespace

template <class T>
void TrueSenseBayerLike<T>::CleanMemory() noexcept {
    InterpolatingDemosaicer<T>::CleanMemory();
    for (cv::Mat* matrix : {&m_pan, &m_halfMosaic, &m_positive, &m_positiveColour, &m_halfColour, &m_colour})
        matrix->release();
}

template <class T>
int TrueSenseBayerLike<T>::Reserve() noexcept {
    if (const int result = InterpolatingDemosaicer<T>::Reserve(); result != KvxResult_Success) return result;
    const cv::Size whole(this->Frame().area.width, this->Frame().area.height);
    const cv::Size half(whole.width / 2, whole.height / 2);
    return Guarded([&] {
        m_pan.create(whole, CV_16SC1);
        m_halfMosaic.create(half, CV_16SC1);
        m_positive.create(half, CV_16UC1);
        m_positiveColour.create(half, CV_16UC3);
        m_halfColour.create(half, CV_16SC3);
        m_colour.create(whole, CV_16SC3);
    });
}

template <class T>
int TrueSenseBayerLike<T>::Convert() noexcept {
    const TrueSenseFrame& frame = this->Frame();
    this->ForBands(0, m_halfMosaic.rows, [this](const TrueSenseWorkspace& workspace, int begin, int end) {
        if (!Reduce<int16_t>(workspace, begin, end)) Reduce<int32_t>(workspace, begin, end);
    });
    if (const int result = Guarded([this] { DemosaicDifferences(); }); result != KvxResult_Success) return result;

    const PixelWriter writer(frame);
    this->ForBands(0, frame.area.region.height, [&](const TrueSenseWorkspace& workspace, int begin, int end) {
        WriteRows(workspace, writer, begin, end);
    });
    return KvxResult_Success;
}

/** Rows [begin, end) of the half mosaic and the pan of their blocks. @return false when Lane cannot hold the samples */
template <class T>
template <class Lane>
bool TrueSenseBayerLike<T>::Reduce(const TrueSenseWorkspace& workspace, int begin, int end) noexcept {
    const TrueSenseFrame& frame = this->Frame();
    const WorkingRows<Lane> rows(frame, workspace);
    const int first = 2 * begin, last = 2 * end;
    for (int row = std::max(first - 1, 0); row <= last; ++row) {
        if (row < frame.area.height && !rows.Take(row)) return false;
        if (row > first) rows.CompletePan(row - 1);
        if (row <= first || row % 2 != 0) continue;
        int16_t *pan0 = workspace.Plane(0), *pan1 = workspace.Plane(1), *half = workspace.Plane(2);
        ReduceRowPair(rows.Row(row - 2), rows.Row(row - 1), rows.Sites(), pan0, pan1, half);
        std::memcpy(m_pan.ptr(row - 2), pan0, m_pan.cols * sizeof(int16_t));
        std::memcpy(m_pan.ptr(row - 1), pan1, m_pan.cols * sizeof(int16_t));
        std::memcpy(m_halfMosaic.ptr(row / 2 - 1), half, m_halfMosaic.cols * sizeof(int16_t));
    }
    return true;
}

/** The library's Bayer conversion takes unsigned samples: the differences are moved up by their minimum, and back. */
template <class T>
void TrueSenseBayerLike<T>::DemosaicDifferences() {
    double minimum = 0;
    cv::minMaxIdx(m_halfMosaic, &minimum);
    cv::subtract(m_halfMosaic, cv::Scalar(minimum), m_positive, cv::noArray(), CV_16U);
    cv::cvtColor(m_positive, m_positiveColour, cv::COLOR_BayerBG2BGR);  // our red is its blue: red comes first
    cv::add(m_positiveColour, cv::Scalar::all(minimum), m_halfColour, cv::noArray(), CV_16S);
    cv::resize(m_halfColour, m_colour, m_colour.size(), 0, 0, cv::INTER_LINEAR);
}

/** Rows [begin, end) of the region. */
template <class T>
void TrueSenseBayerLike<T>::WriteRows(const TrueSenseWorkspace& workspace, const PixelWriter& writer, int begin,
                                      int end) noexcept {
    const WorkingArea& area = this->Frame().area;
    int16_t* const planes[] = {workspace.Plane(0), workspace.Plane(1), workspace.Plane(2)};
    for (int row = begin; row < end; ++row) {
        const int16_t* pan = m_pan.ptr<int16_t>(area.region.row + row) + area.region.column;
        const int16_t* differences = m_colour.ptr<int16_t>(area.region.row + row) + ptrdiff_t{3} * area.region.column;
        AddPan(pan, differences, static_cast<size_t>(area.region.width), planes);
        writer.WriteRow(row, {planes[0], planes[1], planes[2]});
    }
}

template class TrueSenseBayerLike<unsigned char>;
template class TrueSenseBayerLike<unsigned short>;

}  // namespace kvx
