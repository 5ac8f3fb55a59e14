// Requests to the page of `tune`: a path in the first line, then values of the query, KEY=VALUE in a line each.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "support/Input.h"
#include "tools/tune/TuneService.h"

using namespace kvx::fuzz;
using namespace kvx::tool;

namespace {

/** A frame of 24x16 pixels, whose file is gone when the service has read it. */
TuneService& Service() {
    static const std::unique_ptr<TuneService> service = [] {
        std::string path = (std::filesystem::temp_directory_path() / "kvx-fuzz-XXXXXX").string();
        Require(::mkdtemp(path.data()) != nullptr, "a temporary directory");
        const std::string frame = path + "/frame.raw";
        std::ofstream(frame) << std::string(24 * 16, 'k');
        TuneInput input;
        input.frames = {frame};
        input.request.format = kvx::frame::FormatByName("BayerRG8");
        input.request.width = 24;
        input.request.height = 16;
        input.reference = cv::Mat(16, 24, CV_8UC3, cv::Scalar::all(9));
        auto made = std::make_unique<TuneService>(std::move(input));
        std::filesystem::remove_all(path);
        return made;
    }();
    return *service;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::istringstream lines(std::string(data, data + size));
    TuneRequest request;
    std::getline(lines, request.path);
    for (std::string line; std::getline(lines, line);) {
        const size_t sign = line.find('=');
        if (sign != std::string::npos) request.query[line.substr(0, sign)] = line.substr(sign + 1);
    }
    const TuneReply reply = Service().Reply(request);
    Require(reply.status == 200 || (reply.status >= 400 && reply.status < 500), "a fault is never the program's");
    Require(reply.status == 200 || reply.body.starts_with("{\"error\":\""), "a refusal has a sentence");
    return 0;
}
