#pragma once

#include <array>

namespace kvx::tool {

/** Highest data rate of a link between camera and computer, for orientation. */
struct CameraLink {
    const char* name;
    double bytesPerSecond;  ///< of pixels
    const char* assumption;
};

constexpr std::array<CameraLink, 7> kCameraLinks = {{
    {"GigE", 0.115e9, "1 Gbit/s less 8 % for frame gaps and headers of jumbo frames"},
    {"USB3", 0.38e9, "5 Gbit/s, 8b/10b, what controllers sustain"},
    {"5GigE", 0.575e9, "five times GigE"},
    {"CoaXPress-6", 0.6e9, "6.25 Gbit/s, 8b/10b, 4 % protocol"},
    {"10GigE", 1.15e9, "ten times GigE"},
    {"CoaXPress-12", 1.2e9, "12.5 Gbit/s, 8b/10b, 4 % protocol"},
    {"CSI-2, 4 lanes", 1.2e9, "D-PHY, 2.5 Gbit/s a lane, 4 % protocol"},
}};

}  // namespace kvx::tool
