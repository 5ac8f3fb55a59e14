/** Frames from layout to layout and out of pictures, in arrays. */
#pragma once

#include <array>

#include "python/native/Arrays.h"

namespace kvx::python {

/** A frame of any layout as samples. @param out an array or None */
pybind11::object Unpack(const pybind11::object& source, const frame::Format& format, const pybind11::object& out,
                        std::optional<uint32_t> width, std::optional<uint32_t> height, int threads);

/** Samples, right-aligned, in the layout of `format`; `isSequence`: packed rows without a gap between them. */
pybind11::object Pack(const pybind11::object& samples, const frame::Format& format, const pybind11::object& out,
                      bool isSequence, int threads);

/** How MakeMosaic() is to see a picture. */
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
