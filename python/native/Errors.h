/** Errors of the frame layer as Python exceptions. */
#pragma once

#include <pybind11/pybind11.h>

#include "frame/base/Fail.h"

namespace kvx::python {

using frame::Fail;

/** Makes pybind11 raise frame::Error as kvxdemosaicing.Error, or as its subclass for the error's code. */
void TranslateErrors();

}  // namespace kvx::python
