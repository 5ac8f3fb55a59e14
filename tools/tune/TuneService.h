#pragma once

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "tools/tune/FrameStore.h"
#include "tools/tune/TunedConversion.h"

namespace kvx::tool {

/** A request of the page, without HTTP. */
struct TuneRequest {
    std::string path;  ///< "part", "plan" and so on
    std::map<std::string, std::string> query;
    bool writes = false;  ///< POST, which may change files
};

struct TuneReply {
    int status = 200;
    std::string type = "application/json";
    std::string body;
    std::map<std::string, std::string> headers = {};
};

/** What the command line gives. */
struct TuneInput {
    std::vector<std::string> frames;
    FrameRequest request;
    std::string cameraPath;
    std::shared_ptr<const frame::CameraProfile> camera;
    cv::Mat reference;  ///< CV_8UC3 in the size of the only frame, or empty
};

/**
 * Answers the requests of the page from the frames of the command line; reads and writes no other files but a frame's
 * sidecar and the profile. Any number of threads may ask: one conversion runs at a time, on all processors.
 */
class TuneService {
public:
    /** Reads the first frame. Throws what ReadFrame() throws, and ExitCode::Frame for a reference that does not fit. */
    explicit TuneService(TuneInput input);

    /** Failures become replies with a status from 400 on and {"error"}. */
    TuneReply Reply(const TuneRequest& request);

private:
    using Handler = TuneReply (TuneService::*)(const TuneRequest&);
    static const std::map<std::string, Handler>& Handlers();

    TuneReply Frames(const TuneRequest& request);
    TuneReply Controls(const TuneRequest& request);
    TuneReply Plan(const TuneRequest& request);
    TuneReply Part(const TuneRequest& request);
    TuneReply Samples(const TuneRequest& request);
    TuneReply Histogram(const TuneRequest& request);
    TuneReply Chart(const TuneRequest& request);
    TuneReply Psnr(const TuneRequest& request);
    TuneReply Export(const TuneRequest& request);
    TuneReply Save(const TuneRequest& request);

    std::shared_ptr<TunedConversion> ConversionFor(const TuneRequest& request, const char* settings = "s");
    std::string ProfilePath(const TunedFrame& frame) const;

    TuneInput m_input;
    std::mutex m_mutex;  ///< of all below, and of conversions
    FrameStore m_frames;
    std::deque<std::pair<std::string, std::shared_ptr<TunedConversion>>> m_conversions;
};

}  // namespace kvx::tool
