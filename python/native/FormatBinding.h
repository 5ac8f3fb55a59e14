#pragma once

#include <pybind11/pybind11.h>

namespace kvx::python {

/** Binds the class Format and the functions that look formats up. */
void BindFormats(pybind11::module_& module);

}  // namespace kvx::python
