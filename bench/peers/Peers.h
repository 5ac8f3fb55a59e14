/** Bayer conversions of other libraries, for comparison. */
#pragma once

#include <memory>
#include <opencv2/core.hpp>
#include <span>
#include <string>
#include <vector>

namespace kvx::peers {

/** A frame in the form that a library converts, repeatedly. */
class Conversion {
public:
    virtual ~Conversion() = default;

    /** Restores the frame if the library works in place, and drops the last image. Not part of the measured time. */
    virtual void Prepare() {}

    /** Converts. Call Prepare() before each call. */
    virtual void Run() = 0;

    /** The image of Run(): 8 bits; blue, green, red. */
    virtual cv::Mat Picture() const = 0;
};

struct Peer {
    const char* name;  ///< library-algorithm
    bool takesWords;   ///< every library takes bytes

    /**
     * @param frame red in its first row and column, green to its right; CV_8UC1, or CV_16UC1 of `depth` bits
     * @throws std::runtime_error if the library refuses it
     */
    std::unique_ptr<Conversion> (*open)(const cv::Mat& frame, int depth);
};

/** All conversions in this build. */
std::span<const Peer> AllPeers();

struct Version {
    std::string library, version;
};

std::vector<Version> LibraryVersions();

}  // namespace kvx::peers
