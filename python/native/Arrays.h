/** NumPy arrays as views: what may be an array of which format, and what to do about one that may not. */
#pragma once

#include <pybind11/numpy.h>

#include <optional>

#include "KvxFrame/View.h"

namespace kvx::python {

/** What a caller says of a frame beside its array. */
struct GivenSize {
    std::optional<uint32_t> width, height;
};

/**
 * A frame in an array: two dimensions with any step from row to row, or one with the size given. Samples are uint8 or
 * uint16 as the format has them, packed ones bytes. The array must outlive the view. @throws frame::Error
 */
frame::SourceView SourceOf(const pybind11::object& object, const frame::Format& format, const GivenSize& size);
frame::DestinationView FrameDestinationOf(const pybind11::object& object, const frame::Format& format,
                                          const GivenSize& size);

/** A picture in an array of rows, columns and samples. @throws frame::Error */
frame::DestinationView PictureDestinationOf(const pybind11::object& object, const frame::Format& format);

/** A picture to be read: its format follows from the array; `isBlueFirst` tells what an array cannot. */
frame::SourceView PictureOf(const pybind11::object& object, bool isBlueFirst);

/** New arrays of any content. */
pybind11::array NewPicture(const frame::Format& format, uint32_t width, uint32_t height);
/** Of rows that start with a byte. */
pybind11::array NewFrame(const frame::Format& format, uint32_t width, uint32_t height);
/** Of packed rows that follow each other without a gap: one dimension. */
pybind11::array NewSequence(const frame::Format& format, uint32_t width, uint32_t height);

/** "uint8", "uint16" or, for big-endian words, ">u2". */
const char* TypeName(const frame::Format& format);

}  // namespace kvx::python
