#include "peers/OpenCv.h"

#include <opencv2/imgproc.hpp>

namespace kvx::peers {
namespace {

class OpenCv : public Conversion {
public:
    OpenCv(const cv::Mat& frame, int depth, int code)
        : m_frame(frame.clone()),
          m_picture(frame.size(), CV_MAKETYPE(frame.depth(), 3), cv::Scalar::all(0)),
          m_maximum((1 << depth) - 1),
          m_code(code) {}

    void Run() override {
        cv::cvtColor(m_frame, m_picture, m_code);
    }

    cv::Mat Picture() const override {
        cv::Mat bytes;
        m_picture.convertTo(bytes, CV_8U, 255.0 / m_maximum);
        return bytes;
    }

private:
    cv::Mat m_frame, m_picture;
    double m_maximum;
    int m_code;
};

/** OpenCV 4.6 shifts its image up by two rows, which this corrects. */
class OpenCvVngConversion : public OpenCv {
public:
    using OpenCv::OpenCv;

    cv::Mat Picture() const override {
        constexpr int kTooHigh = 2;
        const cv::Mat picture = OpenCv::Picture();
        cv::Mat moved = picture.clone();
        picture.rowRange(0, picture.rows - kTooHigh).copyTo(moved.rowRange(kTooHigh, picture.rows));
        return moved;
    }
};

}  // namespace

// OpenCV names a pattern by the second row and column: this "BG" has red in the first.
std::unique_ptr<Conversion> OpenCvBilinear(const cv::Mat& frame, int depth) {
    return std::make_unique<OpenCv>(frame, depth, cv::COLOR_BayerBG2BGR);
}

std::unique_ptr<Conversion> OpenCvEdgeAware(const cv::Mat& frame, int depth) {
    return std::make_unique<OpenCv>(frame, depth, cv::COLOR_BayerBG2BGR_EA);
}

std::unique_ptr<Conversion> OpenCvVng(const cv::Mat& frame, int depth) {
    return std::make_unique<OpenCvVngConversion>(frame, depth, cv::COLOR_BayerBG2BGR_VNG);
}

}  // namespace kvx::peers
