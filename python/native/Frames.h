/** Unpacking, packing and simulation of frames in arrays. */
#pragma once

#include <array>

#include "python/native/Arrays.h"

namespace kvx::python {

/** Unpacks a frame of any layout. @param out an array or None */
pybind11::object Unpack(const pybind11::object& source, const frame::Format& format, const pybind11::object& out,
                        std::optional<uint32_t> width, std::optional<uint32_t> height, int threads);

/** Packs right-aligned samples into the layout of `format`; `isSequence`: packed rows without gaps. */
pybind11::object Pack(const pybind11::object& samples, const frame::Format& format, const pybind11::object& out,
                      bool isSequence, int threads);

/** Options of MakeMosaic(). */
struct Scene {
    bool isBlueFirst, isLinear;
    std::array<double, 3> panWeights;
    uint32_t white;
    std::optional<double> analogGain;
    uint64_t seed;
};

pybind11::object Mosaic(const pybind11::object& picture, const frame::Format& format, const pybind11::object& out,
                        const Scene& scene, int threads);

}  // namespace kvx::python
