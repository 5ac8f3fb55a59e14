#include "tools/files/PictureDecoder.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <mutex>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <string_view>

#include "tools/ToolError.h"
#include "tools/files/Npy.h"
#include "tools/files/Pnm.h"

namespace kvx::tool {
namespace {

using namespace std::string_view_literals;

constexpr std::array kSignatures = {"\x89PNG\r\n\x1a\n"sv, "II\x2a\0"sv, "MM\0\x2a"sv, "II\x2b\0"sv, "MM\0\x2b"sv};

/**
 * Keeps the decoders' own messages off standard error, where the user gets one line from us instead. The stream
 * belongs to the process: of several threads that decode, the first redirects it and the last restores it.
 */
class QuietStandardError {
public:
    QuietStandardError() {
        const std::lock_guard lock(s_mutex);
        if (s_users++ == 0) {
            Redirect();
        }
    }
    QuietStandardError(const QuietStandardError&) = delete;
    QuietStandardError& operator=(const QuietStandardError&) = delete;
    ~QuietStandardError() {
        const std::lock_guard lock(s_mutex);
        if (--s_users == 0) {
            PutBack();
        }
    }

private:
    static void Redirect() {
        std::fflush(stderr);
        s_saved = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0);
        const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (s_saved >= 0 && nowhere >= 0) {
            ::dup2(nowhere, STDERR_FILENO);
        }
        if (nowhere >= 0) {
            ::close(nowhere);
        }
    }

    static void PutBack() {
        std::fflush(stderr);
        if (s_saved >= 0) {
            ::dup2(s_saved, STDERR_FILENO);
            ::close(s_saved);
        }
    }

    static inline std::mutex s_mutex;  // of what follows
    static inline int s_users = 0;
    static inline int s_saved = -1;
};

cv::Mat Decode(const Bytes& content, const std::string& name) {
    cv::Mat pixels;
    try {
        const QuietStandardError quiet;
        pixels = content.empty() ? cv::Mat() : cv::imdecode(content, cv::IMREAD_UNCHANGED);
    } catch (const cv::Exception&) {
        // An empty picture, as after any other failure to decode.
    }
    if (pixels.empty()) {
        Fail(ExitCode::Input, "{}: is not a picture, or is damaged: give a PNG, TIFF, PGM, PPM or NumPy file", name);
    }
    return pixels;
}

}  // namespace

bool IsPictureFile(const Bytes& content) {
    const std::string_view text(reinterpret_cast<const char*>(content.data()), content.size());
    return ParsePnmHeader(content) || IsNpy(content) ||
           std::any_of(kSignatures.begin(), kSignatures.end(),
                       [text](auto signature) { return text.starts_with(signature); });
}

Picture DecodePicture(const Bytes& content, const std::string& name) {
    if (const std::optional<PnmHeader> header = ParsePnmHeader(content)) {
        return DecodePnm(content, *header, name);
    }
    if (IsNpy(content)) {
        return DecodeNpy(content, name);
    }
    cv::Mat pixels = Decode(content, name);
    if (pixels.channels() == 4) {
        cv::cvtColor(pixels, pixels, cv::COLOR_BGRA2BGR);
    }
    const bool isKnownDepth = pixels.depth() == CV_8U || pixels.depth() == CV_16U;
    if (!isKnownDepth || (pixels.channels() != 1 && pixels.channels() != 3)) {
        Fail(ExitCode::Input, "{}: has an unsupported kind of samples: give a picture with 8 or 16 bits per sample",
             name);
    }
    return {pixels, pixels.depth() == CV_16U ? 65535u : 255u};
}

}  // namespace kvx::tool
