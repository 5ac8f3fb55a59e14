/** Other libraries' conversions of Bayer frames: what ours are measured beside. */
#pragma once

#include <memory>
#include <opencv2/core.hpp>
#include <span>
#include <string>
#include <vector>

namespace kvx::peers {

/** A frame that a library has taken in and converts again and again. */
class Conversion {
public:
    virtual ~Conversion() = default;

    /** Puts the frame back where the library works in place, drops what it made. Not part of the conversion. */
    virtual void Prepare() {}

    /** The conversion, each time after Prepare(). */
    virtual void Run() = 0;

    /** What Run() made: 8 bits; blue, green, red. */
    virtual cv::Mat Picture() const = 0;
};

struct Peer {
    const char* name;  ///< library-algorithm
    bool takesWords;   ///< all take bytes

    /**
     * @param frame red in its first row and column, green beside it; CV_8UC1, or CV_16UC1 of `depth` bits
     * @throws std::runtime_error when the library cannot take it
     */
    std::unique_ptr<Conversion> (*open)(const cv::Mat& frame, int depth);
};

/** All that this build has. */
std::span<const Peer> AllPeers();

struct Version {
    std::string library, version;
};

std::vector<Version> LibraryVersions();

}  // namespace kvx::peers
