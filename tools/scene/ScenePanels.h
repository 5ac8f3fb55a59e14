#pragma once

#include <opencv2/core.hpp>
#include <string>

namespace kvx::tool {

/** Panels of the test scene. They fill `canvas`, a part of a CV_8UC3 picture (blue, green, red). */

/** Four rows of six patches: hues strong, light and dark, and a grey scale. */
void DrawColourChart(cv::Mat canvas);

/** Rings whose frequency grows outwards to one line per `finestPitch` pixels at the left and right edge. */
void DrawZonePlate(cv::Mat canvas, double finestPitch);

/** Rays that meet in the middle. */
void DrawStar(cv::Mat canvas, int rayCount);

/** Lines one `pitch` apart, half of it wide; 0 degrees draws upright lines. */
void DrawLines(cv::Mat canvas, double pitch, double degrees, const cv::Scalar& ink, const cv::Scalar& paper);

/** Rows of text, each smaller than the one above. */
void DrawText(cv::Mat canvas, const std::string& text, const cv::Scalar& ink, const cv::Scalar& paper);

/** Horizontal ramps: all hues, then black to white, red, green and blue. */
void DrawRamps(cv::Mat canvas);

}  // namespace kvx::tool
