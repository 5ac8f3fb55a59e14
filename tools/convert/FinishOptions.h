#pragma once

#include <CLI/CLI.hpp>
#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "KvxFrame/Finish.h"
#include "tools/files/Sidecar.h"

namespace kvx::tool {

/** White balance as the user asks for it. */
struct WhiteBalanceRequest {
    enum class Source { Measured, Sidecar, Given };
    Source source = Source::Measured;
    frame::WhiteBalance method = frame::WhiteBalance::WhitePatch;  ///< of a measured one
    frame::Gains gains;                                            ///< of a given one
};

/** The finish as the user asks for it. */
struct FinishRequest {
    std::optional<WhiteBalanceRequest> whiteBalance;
    std::optional<uint64_t> blackLevel;
    std::optional<uint64_t> whiteLevel;
    std::optional<std::array<double, 9>> matrix;
    std::optional<frame::ToneCurve> tone;
};

/** Adds --white-balance, --black-level, --white-level, --matrix and --tone. */
void AddFinishOptions(CLI::App& command, FinishRequest& request);

/**
 * The finish of a frame, or nothing when none of the options was given. The sidecar supplies what the options leave
 * open. Throws ExitCode::Usage for a white balance that the sidecar lacks and for levels out of range.
 */
std::optional<frame::Finish> MakeFinish(const FinishRequest& request, const Sidecar& sidecar,
                                        const frame::Format& format, const std::string& name);

}  // namespace kvx::tool
