/** The GObject properties of the element. */
#pragma once

#include <glib-object.h>

#include "gstreamer/Settings.h"

namespace kvx::gst {

void InstallProperties(GObjectClass* gobjectClass);

/** @return false for an unknown number */
bool SetProperty(Settings& settings, guint number, const GValue* value);
bool GetProperty(const Settings& settings, guint number, GValue* value);

}  // namespace kvx::gst
