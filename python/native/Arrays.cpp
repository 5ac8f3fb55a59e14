#include "python/native/Arrays.h"

#include <algorithm>
#include <string>
#include <vector>

#include "KvxFrame/Packing.h"
#include "python/native/Errors.h"

namespace kvx::python {
namespace py = pybind11;
using frame::Format;
using frame::Layout;

namespace {

/** Whether rows are bytes rather than samples. */
bool IsPacked(const Format& format) {
    return format.layout == Layout::Pfnc || format.layout == Layout::GigE || format.layout == Layout::Mipi;
}

py::ssize_t ItemBytes(const Format& format) {
    return format.bits > 8 && !IsPacked(format) ? 2 : 1;
}

uint32_t Clipped(py::ssize_t count) {
    return static_cast<uint32_t>(std::min<py::ssize_t>(count, UINT32_MAX));  // the check of the view refuses it
}

py::array RequireArray(const py::object& object, const char* role) {
    if (!py::isinstance<py::array>(object))
        Fail(KvxResult_WrongType, "{} is a {}: give a numpy array, such as numpy.frombuffer(data, numpy.uint8)", role,
             std::string(py::str(py::type::of(object).attr("__name__"))));
    return py::reinterpret_borrow<py::array>(object);
}

bool IsUnsigned(const py::array& array, py::ssize_t itemBytes) {
    return array.dtype().kind() == 'u' && array.itemsize() == itemBytes;
}

bool HasForeignByteOrder(const py::array& array) {
    return array.dtype().byteorder() == '>';
}

std::string AdviceFor(const py::array& array, const Format& format, const char* role) {
    if (IsPacked(format))
        return fmt::format("give its bytes, {}.view(numpy.uint8), or the name of a format that is not packed: {}", role,
                           frame::Name(frame::Unpacked(format)));
    if (IsUnsigned(array, 1))
        return fmt::format("{}.view(numpy.uint16) if these are bytes of words, else give a format of 8 bits", role);
    if (IsUnsigned(array, 2)) return fmt::format("give a format of more bits than 8, or {}.astype(numpy.uint8)", role);
    return fmt::format("{}.astype(numpy.{})", role, ItemBytes(format) == 2 ? "uint16" : "uint8");
}

void CheckType(const py::array& array, const Format& format, const char* role) {
    if (!IsUnsigned(array, ItemBytes(format)))
        Fail(KvxResult_WrongType, "{} holds {}, but {} takes {}: {}", role, std::string(py::str(array.dtype())),
             frame::Name(format), TypeName(format), AdviceFor(array, format, role));
    if (HasForeignByteOrder(array) && format.layout != Layout::BigEndian)
        Fail(KvxResult_WrongType,
             "{} holds big-endian words: {}.astype(numpy.uint16), or a big-endian format such "
             "as BayerRG12be",
             role, role);
}

void CheckWritable(const py::array& array) {
    if (!array.writeable())
        Fail(KvxResult_InvalidArgument, "out is read-only: give an array that can be written, or numpy.copy(out)");
}

[[noreturn]] void RefuseGap(const char* role, const char* items, py::ssize_t step, py::ssize_t needed) {
    Fail(KvxResult_InvalidArgument,
         "the {} of {} are {} bytes apart instead of {}: numpy.ascontiguousarray({}) has them side by side", items,
         role, step, needed, role);
}

/** The view of an array's rows. */
template <class View>
View RowsOf(const py::array& array, const Format& format, uint32_t width, const char* role) {
    View view;
    view.data = const_cast<void*>(array.data());
    view.width = width;
    view.height = Clipped(array.shape(0));
    view.format = format;
    py::ssize_t rowBytes = array.itemsize();
    for (py::ssize_t axis = 1; axis < array.ndim(); ++axis) rowBytes *= array.shape(axis);
    view.stride = view.height > 1 ? array.strides(0) : rowBytes;
    if (view.stride == 0 && array.size() > 0)
        Fail(KvxResult_InvalidArgument, "all rows of {} are the same memory: numpy.ascontiguousarray({})", role, role);
    const size_t step = view.stride < 0 ? -static_cast<size_t>(view.stride) : static_cast<size_t>(view.stride);
    view.capacity = array.size() > 0 ? step * (view.height - 1) + rowBytes : 0;
    return view;
}

/** The number of samples that exactly fill a packed row. */
std::optional<uint32_t> WholeWidth(const Format& format, py::ssize_t bytes) {
    const auto width = Clipped(bytes * 8 / static_cast<py::ssize_t>(frame::RowBytes(format, 8)));
    if (frame::RowBytes(format, width) != static_cast<uint64_t>(bytes)) return {};
    return width;
}

uint32_t WidthOf(const py::array& array, const Format& format, const GivenSize& size, const char* role) {
    const py::ssize_t columns = array.shape(1);
    if (!IsPacked(format)) {
        if (size.width && *size.width != columns)
            Fail(KvxResult_InvalidArgument, "{} has {} columns, not {}: leave width out, or cut it with {}[:, :{}]",
                 role, columns, *size.width, role, *size.width);
        return Clipped(columns);
    }
    if (size.width) return *size.width;  // rows may have padding
    if (const auto width = WholeWidth(format, columns)) return *width;
    Fail(KvxResult_InvalidArgument,
         "rows of {} bytes are no whole number of {} samples: give width=, the rest is "
         "padding",
         columns, frame::Name(format));
}

template <class View>
View FrameRows(const py::array& array, const Format& format, const GivenSize& size, const char* role) {
    if (size.height && *size.height != array.shape(0))
        Fail(KvxResult_InvalidArgument, "{} has {} rows, not {}: leave height out, or cut it with {}[:{}]", role,
             array.shape(0), *size.height, role, *size.height);
    if (array.shape(1) > 1 && array.strides(1) != array.itemsize())
        RefuseGap(role, "columns", array.strides(1), array.itemsize());
    return RowsOf<View>(array, format, WidthOf(array, format, size, role), role);
}

/** A frame in one dimension. */
template <class View>
View FrameSequence(const py::array& array, const Format& format, const GivenSize& size, const char* role) {
    if (!size.width || !size.height)
        Fail(KvxResult_InvalidArgument, "{} has one dimension: give width= and height=", role);
    if (array.size() > 1 && array.strides(0) != array.itemsize())
        RefuseGap(role, "samples", array.strides(0), array.itemsize());
    View view;
    view.data = const_cast<void*>(array.data());
    view.width = *size.width;
    view.height = *size.height;
    view.capacity = static_cast<size_t>(array.nbytes());
    view.format = format;
    if (const auto packing = frame::PackingOf(format); packing && IsPacked(format)) {
        const auto image = frame::PackedImageOfSize(*packing, view.width, view.height, view.capacity);
        if (image.padding == frame::RowPadding::Line)
            view.stride = static_cast<ptrdiff_t>(frame::RowBytes(format, view.width));
    } else if (const uint64_t needed = frame::ImageBytes(format, view.width, view.height, 0); needed != view.capacity) {
        Fail(KvxResult_InvalidArgument, "{} has {} bytes, but {} x {} pixels of {} take {}: check size and format",
             role, view.capacity, view.width, view.height, frame::Name(format), needed);
    }
    return view;
}

template <class View>
View FrameOf(const py::array& array, const Format& format, const GivenSize& size, const char* role) {
    if (format.family == frame::Family::Colour)
        Fail(KvxResult_InvalidArgument, "{} is no format of frames: these are mono, Bayer or TrueSense",
             frame::Name(format));
    CheckType(array, format, role);
    if (array.ndim() == 1) return FrameSequence<View>(array, format, size, role);
    if (array.ndim() != 2)
        Fail(KvxResult_InvalidArgument,
             "{} has {} dimensions: a frame has rows and columns, two, or one with "
             "width= and height=",
             role, array.ndim());
    return FrameRows<View>(array, format, size, role);
}

template <class View>
View PictureRows(const py::array& array, const Format& format, const char* role) {
    const auto samples = static_cast<py::ssize_t>(frame::SamplesPerPixel(format)), itemBytes = array.itemsize();
    if (array.ndim() == 3 && array.strides(2) != itemBytes) RefuseGap(role, "samples", array.strides(2), itemBytes);
    if (array.shape(1) > 1 && array.strides(1) != samples * itemBytes)
        RefuseGap(role, "pixels", array.strides(1), samples * itemBytes);
    return RowsOf<View>(array, format, Clipped(array.shape(1)), role);
}

py::array NewArray(const Format& format, std::vector<py::ssize_t> shape) {
    return py::array(py::dtype(TypeName(format)), std::move(shape));
}

}  // namespace

const char* TypeName(const Format& format) {
    if (ItemBytes(format) == 1) return "uint8";
    return format.layout == Layout::BigEndian ? ">u2" : "uint16";
}

frame::SourceView SourceOf(const py::object& object, const Format& format, const GivenSize& size) {
    return FrameOf<frame::SourceView>(RequireArray(object, "frame"), format, size, "frame");
}

frame::DestinationView FrameDestinationOf(const py::object& object, const Format& format, const GivenSize& size) {
    const py::array array = RequireArray(object, "out");
    CheckWritable(array);
    return FrameOf<frame::DestinationView>(array, format, size, "out");
}

frame::DestinationView PictureDestinationOf(const py::object& object, const Format& format) {
    const py::array array = RequireArray(object, "out");
    CheckWritable(array);
    const auto samples = static_cast<py::ssize_t>(frame::SamplesPerPixel(format));
    if (!IsUnsigned(array, ItemBytes(format)) || HasForeignByteOrder(array))
        Fail(KvxResult_WrongType,
             "out holds {}, but {} takes {}: give such an array, or another to=", std::string(py::str(array.dtype())),
             frame::Name(format), TypeName(format));
    if (array.ndim() != 3 || array.shape(2) != samples)
        Fail(KvxResult_InvalidArgument, "out has the shape {}, but {} takes (height, width, {})",
             std::string(py::str(array.attr("shape"))), frame::Name(format), samples);
    return PictureRows<frame::DestinationView>(array, format, "out");
}

frame::SourceView PictureOf(const py::object& object, bool isBlueFirst) {
    const py::array array = RequireArray(object, "picture");
    if (!(IsUnsigned(array, 1) || IsUnsigned(array, 2)) || HasForeignByteOrder(array))
        Fail(KvxResult_WrongType, "picture holds {}: give uint8 or uint16, as in (255 * picture).astype(numpy.uint8)",
             std::string(py::str(array.dtype())));
    const py::ssize_t samples = array.ndim() == 2 ? 1 : array.ndim() == 3 ? array.shape(2) : 0;
    if (samples != 1 && samples != 3 && samples != 4)
        Fail(KvxResult_InvalidArgument, "picture has the shape {}: give (height, width), or (height, width, 3 or 4)",
             std::string(py::str(array.attr("shape"))));
    Format format;
    format.bits = static_cast<uint8_t>(8 * array.itemsize());
    if (samples > 1) {
        format.family = frame::Family::Colour;
        format.order = samples == 4 ? (isBlueFirst ? frame::Order::Bgra : frame::Order::Rgba)
                                    : (isBlueFirst ? frame::Order::Bgr : frame::Order::Rgb);
    }
    return PictureRows<frame::SourceView>(array, format, "picture");
}

py::array NewPicture(const Format& format, uint32_t width, uint32_t height) {
    return NewArray(format, {height, width, frame::SamplesPerPixel(format)});
}

py::array NewFrame(const Format& format, uint32_t width, uint32_t height) {
    return NewArray(format, {height, static_cast<py::ssize_t>(frame::RowBytes(format, width)) / ItemBytes(format)});
}

py::array NewSequence(const Format& format, uint32_t width, uint32_t height) {
    return NewArray(format,
                    {static_cast<py::ssize_t>(frame::ImageBytes(format, width, height, 0)) / ItemBytes(format)});
}

}  // namespace kvx::python
