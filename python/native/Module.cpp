// The bindings of libKvxFrame that kvxdemosaicing/*.py uses; that is the documented interface.
#include <pybind11/stl.h>

#include <cfloat>
#include <limits>

#include "python/native/ArrayConverter.h"
#include "python/native/Errors.h"
#include "python/native/FormatBinding.h"
#include "python/native/Frames.h"

namespace kvx::python {
namespace py = pybind11;

namespace {

/** Name, default, minimum, maximum, writable, description; numbers have the parameter's type. */
py::tuple ParameterFacts(const _KvxStParam& parameter, frame::Family family) {
    const char* const text = frame::ParameterText(family, parameter.name);
    const bool isWritable = (parameter.flags & KvxParamAccess_Write) != 0;
    if (parameter.type == KvxParamType_Int)
        return py::make_tuple(parameter.name, parameter.defaultValue.asInt, parameter.minValue.asInt,
                              parameter.maxValue.asInt, isWritable, text);
    const double least = parameter.minValue.asFloat;  // DBL_MIN stands for none
    return py::make_tuple(parameter.name, parameter.defaultValue.asFloat,
                          least == DBL_MIN ? -std::numeric_limits<double>::infinity() : least,
                          parameter.maxValue.asFloat, isWritable, text);
}

py::list AllParameterFacts(ArrayConverter& converter) {
    py::list facts;
    for (const _KvxStParam& parameter : converter.Parameters())
        facts.append(ParameterFacts(parameter, converter.Family()));
    return facts;
}

frame::WhiteBalance WhiteBalanceByName(const std::string& name) {
    if (name == "given") return frame::WhiteBalance::Given;
    if (name == "auto") return frame::WhiteBalance::Auto;
    if (name == "white-patch") return frame::WhiteBalance::WhitePatch;
    if (name == "grey-world" || name == "gray-world") return frame::WhiteBalance::GreyWorld;
    Fail(KvxResult_UnknownName, "white_balance='{}': give auto, white-patch, grey-world, or gains", name);
}

frame::ToneCurve ToneCurveByName(const std::string& name) {
    if (name == "linear") return frame::ToneCurve::Linear;
    if (name == "srgb") return frame::ToneCurve::Srgb;
    if (name == "table") return frame::ToneCurve::Table;
    Fail(KvxResult_UnknownName, "tone='{}': give linear, srgb, or a table", name);
}

GivenFinish MakeFinish(const std::array<double, 4>& blackLevel, const std::array<double, 4>& whiteLevel,
                       const std::string& whiteBalance, const std::array<double, 4>& gains, double exposure,
                       bool autoExposure, const std::array<double, 9>& matrix, const std::string& tone,
                       std::vector<uint16_t> table, const std::array<bool, 4>& given) {
    frame::Finish finish;
    finish.blackLevel.ofFilters = blackLevel;
    finish.whiteLevel.ofFilters = whiteLevel;
    finish.exposure = exposure;
    finish.autoExposure = autoExposure;
    finish.whiteBalance = WhiteBalanceByName(whiteBalance);
    finish.gains = {gains[0], gains[1], gains[2], gains[3]};
    finish.matrix = matrix;
    finish.tone = ToneCurveByName(tone);
    finish.table = std::move(table);
    return {std::move(finish), {given[0], given[1], given[2], given[3]}};
}

std::array<double, 4> MeasuredGains(const py::object& source, const frame::Format& format, const GivenFinish& given,
                                    const std::optional<std::array<uint32_t, 4>>& place, std::optional<uint32_t> width,
                                    std::optional<uint32_t> height) {
    const frame::SourceView view = SourceOf(source, format, {width, height});
    const py::gil_scoped_release release;
    const frame::Gains gains =
        place ? frame::MeasureGainsOfGrey(view, {(*place)[0], (*place)[1], (*place)[2], (*place)[3]}, given.finish)
              : frame::MeasureGains(view, given.finish);
    return {gains.red, gains.green, gains.blue, gains.pan};
}

void BindFinish(py::module_& module) {
    py::class_<GivenFinish>(module, "Finish")
        .def(py::init(&MakeFinish), py::arg("black_level"), py::arg("white_level"), py::arg("white_balance"),
             py::arg("gains"), py::arg("exposure"), py::arg("auto_exposure"), py::arg("matrix"), py::arg("tone"),
             py::arg("table"), py::arg("given"));
    module.def("measure_gains", &MeasuredGains, py::arg("source"), py::arg("format"), py::arg("finish"),
               py::arg("place"), py::arg("width"), py::arg("height"));
}

void BindConverter(py::module_& module) {
    py::class_<ArrayConverter>(module, "ArrayConverter")
        .def(py::init([](const frame::Format& format) { return std::make_unique<ArrayConverter>(format.family); }),
             py::arg("format"))
        .def("convert", &ArrayConverter::Convert, py::arg("source"), py::arg("format"), py::arg("to"), py::arg("out"),
             py::arg("width"), py::arg("height"), py::arg("checks_depth"))
        .def("set_algorithm", &ArrayConverter::SetAlgorithm, py::arg("name_or_number"))
        .def("algorithm", &ArrayConverter::AlgorithmName)
        .def("set_threads", &ArrayConverter::SetThreads, py::arg("count"))
        .def("set_parameter", &ArrayConverter::SetParameter, py::arg("name"), py::arg("value"))
        .def("parameter", &ArrayConverter::Parameter, py::arg("name"))
        .def("parameter_facts", &AllParameterFacts)
        .def("set_finish", &ArrayConverter::SetFinish, py::arg("finish"))
        .def("set_analog_gain", &ArrayConverter::SetAnalogGain, py::arg("gain"))
        .def("set_camera", &ArrayConverter::SetCamera, py::arg("path"), py::arg("finds_defects"))
        .def("last_gains", &ArrayConverter::LastGains)
        .def("last_exposure", &ArrayConverter::LastExposure)
        .def("release", &ArrayConverter::Release);
}

void BindFrames(py::module_& module) {
    module.def("unpack", &Unpack, py::arg("source"), py::arg("format"), py::arg("out"), py::arg("width"),
               py::arg("height"), py::arg("threads"));
    module.def("pack", &Pack, py::arg("samples"), py::arg("format"), py::arg("out"), py::arg("is_sequence"),
               py::arg("threads"));
    module.def(
        "mosaic",
        [](const py::object& picture, const frame::Format& format, const py::object& out, bool isBlueFirst,
           bool isLinear, const std::array<double, 3>& panWeights, uint32_t white, std::optional<double> analogGain,
           uint64_t seed, int threads) {
            return Mosaic(picture, format, out, {isBlueFirst, isLinear, panWeights, white, analogGain, seed}, threads);
        },
        py::arg("picture"), py::arg("format"), py::arg("out"), py::arg("is_blue_first"), py::arg("is_linear"),
        py::arg("pan_weights"), py::arg("white"), py::arg("analog_gain"), py::arg("seed"), py::arg("threads"));
}

}  // namespace
}  // namespace kvx::python

PYBIND11_MODULE(_native, module) {
    module.doc() = "The part of kvxdemosaicing that is not written in Python.";
    module.attr("__version__") = KVX_PYTHON_VERSION;
    kvx::python::TranslateErrors();
    kvx::python::BindFormats(module);
    kvx::python::BindFinish(module);
    kvx::python::BindConverter(module);
    kvx::python::BindFrames(module);
}
