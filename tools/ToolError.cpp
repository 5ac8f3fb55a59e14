#include "tools/ToolError.h"

#include <new>
#include <opencv2/core.hpp>

namespace kvx::tool {

ToolError CurrentFailure() {
    ToolError noMemory(ExitCode::Frame, "not enough memory for a frame of this size: free some, or check the size");
    try {
        throw;
    } catch (const ToolError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return noMemory;
    } catch (const cv::Exception& error) {
        return error.code == cv::Error::StsNoMem ? noMemory : ToolError(ExitCode::Unexpected, error.what());
    } catch (const std::exception& error) {
        return {ExitCode::Unexpected, error.what()};
    }
}

}  // namespace kvx::tool
