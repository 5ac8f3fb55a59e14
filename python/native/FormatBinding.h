#pragma once

#include <pybind11/pybind11.h>

namespace kvx::python {

/** The class Format and the functions that find one. */
void BindFormats(pybind11::module_& module);

}  // namespace kvx::python
