#include "python/native/Errors.h"

namespace kvx::python {
namespace py = pybind11;

void TranslateErrors() {
    // NOLINTNEXTLINE(performance-unnecessary-value-param): pybind11 gives it by value
    py::register_local_exception_translator([](std::exception_ptr pointer) {
        try {
            if (pointer) std::rethrow_exception(pointer);
        } catch (const frame::Error& error) {
            const py::object instance =
                py::module_::import("kvxdemosaicing._error").attr("error_of")(error.what(), error.Result());
            PyErr_SetObject(py::type::of(instance).ptr(), instance.ptr());
        }
    });
}

}  // namespace kvx::python
