/** Measures conversions of other libraries. */
#pragma once

#include <exception>

#include "peers/Peers.h"
#include "support/Frames.h"

namespace kvx::bench {

/** Converts a frame of a depth; what the library must do before each frame is not measured. */
inline void RunPeer(benchmark::State& state, const peers::Peer& peer, int depth, const Size& size) {
    try {
        const auto conversion = peer.open(DrawnFrame(size, depth), depth);
        for ([[maybe_unused]] auto _ : state) {
            state.PauseTiming();
            conversion->Prepare();
            state.ResumeTiming();
            conversion->Run();
        }
    } catch (const std::exception& error) {
        state.SkipWithError(error.what());
    }
}

}  // namespace kvx::bench
