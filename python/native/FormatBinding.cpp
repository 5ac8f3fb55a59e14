#include "python/native/FormatBinding.h"

#include <pybind11/stl.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "KvxFrame/Converter.h"
#include "KvxFrame/Format.h"
#include "KvxFrame/Geometry.h"
#include "python/native/Arrays.h"
#include "python/native/Errors.h"

namespace kvx::python {
namespace py = pybind11;
using frame::Format;

namespace {

const char* FamilyName(frame::Family family) {
    switch (family) {
        case frame::Family::Bayer:
            return "bayer";
        case frame::Family::TrueSense:
            return "truesense";
        case frame::Family::Colour:
            return "colour";
        default:
            return "mono";
    }
}

const char* LayoutName(frame::Layout layout) {
    switch (layout) {
        case frame::Layout::MsbAligned:
            return "msb";
        case frame::Layout::BigEndian:
            return "big-endian";
        case frame::Layout::Pfnc:
            return "pfnc";
        case frame::Layout::GigE:
            return "gige";
        case frame::Layout::Mipi:
            return "mipi";
        default:
            return "plain";
    }
}

const char* SchemeName(frame::Scheme scheme) {
    switch (scheme) {
        case frame::Scheme::Library:
            return "library";
        case frame::Scheme::Pfnc:
            return "pfnc";
        case frame::Scheme::GStreamer:
            return "gstreamer";
        case frame::Scheme::V4l2:
            return "v4l2";
        case frame::Scheme::OpenCv:
            return "opencv";
        default:
            return "frame";
    }
}

std::vector<std::string> Tile(const Format& format) {
    std::vector<std::string> rows;
    if (format.family == frame::Family::Colour) return rows;
    for (uint32_t row = 0; row < frame::TileSide(format); ++row) {
        rows.emplace_back();
        for (uint32_t column = 0; column < frame::TileSide(format); ++column)
            rows.back() += frame::FilterAt(format, row, column);
    }
    return rows;
}

std::vector<std::pair<std::string, std::string>> Names(const Format& format) {
    std::vector<std::pair<std::string, std::string>> names;
    for (const frame::FormatName& name : frame::NamesOf(format)) names.emplace_back(SchemeName(name.scheme), name.name);
    return names;
}

std::vector<std::string> Algorithms(const Format& format) {
    std::vector<std::string> names;
    for (const frame::Algorithm& algorithm : frame::AlgorithmsOf(format.family)) names.emplace_back(algorithm.name);
    return names;
}

/** The format of a region of a frame that starts at this row and column. */
Format At(const Format& format, uint32_t row, uint32_t column) {
    const uint32_t side = frame::TileSide(format);
    row %= side;
    column %= side;
    const uint8_t data = 0;  // cropping reads no pixel
    const frame::SourceView frame{&data, column + 1, row + 1, 0, SIZE_MAX, frame::Unpacked(format)};
    Format cut = frame::Crop(frame, {column, row, 1, 1}).format;
    cut.layout = format.layout;
    return cut;
}

Format ByPfncCode(uint32_t code) {
    if (const auto format = frame::FormatByPfncCode(code)) return *format;
    Fail(KvxResult_UnknownName, "no format has the PFNC code 0x{:08X}: formats() lists those that there are", code);
}

}  // namespace

void BindFormats(py::module_& module) {
    py::class_<Format>(module, "Format", "A pixel format: what the samples of a frame or a picture are.")
        .def_property_readonly("name", [](const Format& format) { return frame::Name(format); })
        .def_property_readonly("family", [](const Format& format) { return FamilyName(format.family); })
        .def_property_readonly("bits", [](const Format& format) { return int{format.bits}; })
        .def_property_readonly("layout", [](const Format& format) { return LayoutName(format.layout); })
        .def_property_readonly("tile", [](const Format& format) { return py::tuple(py::cast(Tile(format))); })
        .def_property_readonly("channels", &frame::SamplesPerPixel)
        .def_property_readonly("dtype", [](const Format& format) { return py::dtype(TypeName(format)); })
        .def_property_readonly("names", &Names)
        .def_property_readonly("algorithms", &Algorithms)
        .def_property_readonly("pfnc_code", &frame::PfncCode)
        .def_property_readonly("fourcc", &frame::Fourcc)
        .def_property_readonly("library_code", &frame::LibraryCode)
        .def_property_readonly("is_source", &frame::IsSource)
        .def_property_readonly("is_destination", &frame::IsDestination)
        .def_property_readonly("unpacked", &frame::Unpacked)
        .def("at", &At, py::arg("row"), py::arg("column"))
        .def("row_bytes", &frame::RowBytes, py::arg("width"))
        .def("__str__", [](const Format& format) { return frame::Name(format); })
        .def("__repr__", [](const Format& format) { return "Format('" + frame::Name(format) + "')"; })
        .def(
            "__eq__", [](const Format& a, const Format& b) { return a == b; }, py::is_operator())
        .def("__hash__", [](const Format& format) { return py::hash(py::str(frame::Name(format))); })
        .def(py::pickle([](const Format& format) { return frame::Name(format); },
                        [](const std::string& name) { return frame::FormatByName(name); }));
    module.def(
        "format_by_name", [](const std::string& name) { return frame::FormatByName(name); }, py::arg("name"));
    module.def("format_by_pfnc_code", &ByPfncCode, py::arg("code"));
    module.def("all_formats", [] { return frame::AllFormats(); });
}

}  // namespace kvx::python
