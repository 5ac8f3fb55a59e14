/** Views of NumPy arrays; errors say how to fix an array that does not fit its format. */
#pragma once

#include <pybind11/numpy.h>

#include <optional>

#include "KvxFrame/View.h"

namespace kvx::python {

/** The size of a frame, if the caller gives it. */
struct GivenSize {
    std::optional<uint32_t> width, height;
};

/**
 * A frame in an array of two dimensions with any row stride, or of one dimension with the size given. Samples are uint8
 * or uint16, depending on the format; packed frames are uint8. The array must outlive the view. @throws frame::Error
 */
frame::SourceView SourceOf(const pybind11::object& object, const frame::Format& format, const GivenSize& size);
frame::DestinationView FrameDestinationOf(const pybind11::object& object, const frame::Format& format,
                                          const GivenSize& size);

/** A picture in an array of rows, columns and samples. @throws frame::Error */
frame::DestinationView PictureDestinationOf(const pybind11::object& object, const frame::Format& format);

/** A picture to read. The array determines its format, except the order of the colours: `isBlueFirst`. */
frame::SourceView PictureOf(const pybind11::object& object, bool isBlueFirst);

/** New, uninitialised arrays. */
pybind11::array NewPicture(const frame::Format& format, uint32_t width, uint32_t height);
/** Rows start on a byte. */
pybind11::array NewFrame(const frame::Format& format, uint32_t width, uint32_t height);
/** Packed rows without gaps, in one dimension. */
pybind11::array NewSequence(const frame::Format& format, uint32_t width, uint32_t height);

/** "uint8", "uint16" or, for big-endian words, ">u2". */
const char* TypeName(const frame::Format& format);

}  // namespace kvx::python
