#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "KvxDemosaicing/KvxImage.h"
#include "KvxFrame/Converter.h"
#include "tools/ToolError.h"
#include "tools/convert/BatchPlan.h"
#include "tools/convert/FrameHints.h"
#include "tools/frames/FrameReader.h"

namespace kvx::tool {

/** How to convert frames: the same for all frames of a run. */
struct ConvertSettings {
    FrameRequest request;
    frame::Format destination;
    std::string algorithm;              ///< empty: the default
    std::vector<std::string> settings;  ///< "NAME=VALUE", in their order
    std::optional<double> analogGain;
    FinishRequest finish;
    std::optional<_KvxRect> crop;
    std::optional<int> flip;  ///< as cv::flip() numbers directions
    int threads = 0;          ///< of one conversion
    int jpegQuality = kJpegQuality;
};

/** The outcome of a frame. Members after `failure` are only valid without one. */
struct FileReport {
    FileTask task;
    std::optional<ToolError> failure;
    std::string inferred;  ///< what was taken from sidecar and name
    std::string format;
    std::string algorithm;
    int width = 0;  ///< of the picture, in pixels
    int height = 0;
    frame::Gains gains;
    double exposure = 0;                   ///< in EV
    std::vector<std::string> hints;        ///< what the user should know about the frame and its picture
    std::chrono::duration<double> time{};  ///< reading, converting, encoding and writing
};

/** Converts files one after the other and reuses its converters. Not for several threads at once. */
class FrameJob {
public:
    /** The settings must outlive the job. */
    explicit FrameJob(const ConvertSettings& settings) : m_settings(settings) {}

    /** Failures go into the report; only an allocation of the report itself can throw. */
    FileReport Run(const FileTask& task);

private:
    void Convert(const FileTask& task, FileReport& report);
    void WriteDng(const FileTask& task, const frame::SourceView& source, const FrameInput& input,
                  const FinishPlan& plan, FileReport& report);
    frame::Converter& ConverterFor(frame::Family family);

    const ConvertSettings& m_settings;
    std::map<frame::Family, frame::Converter> m_converters;
};

}  // namespace kvx::tool
