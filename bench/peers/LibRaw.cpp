#include "peers/LibRaw.h"

#include <libraw/libraw.h>

#include <algorithm>
#include <stdexcept>

namespace kvx::peers {
namespace {

/** Gives access to the protected steps. LibRaw computes in 16 bits and expects frames that use all of them. */
class Processor : public LibRaw {
public:
    using Step = void (Processor::*)();

    explicit Processor(const cv::Mat& words) {
        const auto size = static_cast<unsigned>(words.total() * words.elemSize());
        const int opened = open_bayer(words.data, size, static_cast<uint16_t>(words.cols),
                                      static_cast<uint16_t>(words.rows), 0, 0, 0, 0, 0, LIBRAW_OPENBAYER_RGGB, 0, 0, 0);
        if (opened != LIBRAW_SUCCESS || unpack() != LIBRAW_SUCCESS || raw2image() != LIBRAW_SUCCESS)
            throw std::runtime_error("LibRaw refuses the frame");
        for (int i = 0; i < 3; ++i) imgdata.color.rgb_cam[i][i] = 1;  // otherwise zero, without colour
        pre_interpolate();
    }

    cv::Mat Pixels() {
        return {imgdata.sizes.iheight, imgdata.sizes.iwidth, CV_16UC4, imgdata.image};
    }

    void Linear() {
        lin_interpolate();
    }
    void Vng() {
        vng_interpolate();
    }
    void Ppg() {
        ppg_interpolate();
    }
    void Ahd() {
        ahd_interpolate();
    }
    void Dcb() {
        dcb(-1, 1);  // the defaults of dcraw_process()
    }
    void Dht() {
        dht_interpolate();
    }
    void Aahd() {
        aahd_interpolate();
    }
};

cv::Mat Widened(const cv::Mat& frame, int depth) {
    cv::Mat words;
    frame.convertTo(words, CV_16U, 65535.0 / ((1 << depth) - 1));
    return words;
}

class LibRawConversion : public Conversion {
public:
    LibRawConversion(const cv::Mat& frame, int depth, Processor::Step step)
        : m_words(Widened(frame, depth)), m_processor(m_words), m_mosaic(m_processor.Pixels().clone()), m_step(step) {}

    void Prepare() override {
        m_mosaic.copyTo(m_processor.Pixels());
    }

    void Run() override {
        (m_processor.*m_step)();
    }

    cv::Mat Picture() const override {
        const cv::Mat pixels = m_processor.Pixels();
        cv::Mat words(pixels.size(), CV_16UC3), bytes;
        cv::mixChannels(pixels, words, {0, 2, 1, 1, 2, 0});
        words.convertTo(bytes, CV_8U, 255.0 / 65535);
        return bytes;
    }

private:
    cv::Mat m_words;  // LibRaw reads it in place
    mutable Processor m_processor;
    cv::Mat m_mosaic;
    Processor::Step m_step;
};

template <Processor::Step step>
std::unique_ptr<Conversion> Open(const cv::Mat& frame, int depth) {
    return std::make_unique<LibRawConversion>(frame, depth, step);
}

}  // namespace

std::unique_ptr<Conversion> LibRawLinear(const cv::Mat& frame, int depth) {
    return Open<&Processor::Linear>(frame, depth);
}
std::unique_ptr<Conversion> LibRawVng(const cv::Mat& frame, int depth) {
    return Open<&Processor::Vng>(frame, depth);
}
std::unique_ptr<Conversion> LibRawPpg(const cv::Mat& frame, int depth) {
    return Open<&Processor::Ppg>(frame, depth);
}
std::unique_ptr<Conversion> LibRawAhd(const cv::Mat& frame, int depth) {
    return Open<&Processor::Ahd>(frame, depth);
}
std::unique_ptr<Conversion> LibRawDcb(const cv::Mat& frame, int depth) {
    return Open<&Processor::Dcb>(frame, depth);
}
std::unique_ptr<Conversion> LibRawDht(const cv::Mat& frame, int depth) {
    return Open<&Processor::Dht>(frame, depth);
}
std::unique_ptr<Conversion> LibRawAahd(const cv::Mat& frame, int depth) {
    return Open<&Processor::Aahd>(frame, depth);
}

}  // namespace kvx::peers
