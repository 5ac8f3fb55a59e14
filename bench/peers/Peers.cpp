#include "peers/Peers.h"

#include <libraw/libraw_version.h>

#include <opencv2/core/version.hpp>

#include "peers/LibRaw.h"
#include "peers/OpenCv.h"
#ifdef KVX_HAS_GSTREAMER
#include "peers/GStreamer.h"
#endif

namespace kvx::peers {
namespace {

constexpr Peer kPeers[] = {
    {"opencv-bilinear", true, OpenCvBilinear},
    {"opencv-edge-aware", true, OpenCvEdgeAware},
    {"opencv-vng", false, OpenCvVng},
#ifdef KVX_HAS_GSTREAMER
    {"gstreamer-bayer2rgb", false, GStreamerBayer2Rgb},
#endif
    {"libraw-linear", true, LibRawLinear},
    {"libraw-vng", true, LibRawVng},
    {"libraw-ppg", true, LibRawPpg},
    {"libraw-ahd", true, LibRawAhd},
    {"libraw-dcb", true, LibRawDcb},
    {"libraw-dht", true, LibRawDht},
    {"libraw-aahd", true, LibRawAahd},
};

}  // namespace

std::span<const Peer> AllPeers() {
    return kPeers;
}

std::vector<Version> LibraryVersions() {
    return {
        {"OpenCV", CV_VERSION},
        {"LibRaw", LIBRAW_VERSION_STR},
#ifdef KVX_HAS_GSTREAMER
        {"GStreamer", GStreamerVersion()},
#endif
    };
}

}  // namespace kvx::peers
