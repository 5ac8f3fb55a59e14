/** The properties of the element, as GObject has them. */
#pragma once

#include <glib-object.h>

#include "gstreamer/Settings.h"

namespace kvx::gst {

void InstallProperties(GObjectClass* gobjectClass);

/** @return whether there is a property with this number */
bool SetProperty(Settings& settings, guint number, const GValue* value);
bool GetProperty(const Settings& settings, guint number, GValue* value);

}  // namespace kvx::gst
