/** The GStreamer element kvxdemosaic. */
#pragma once

#include <gst/gst.h>

G_BEGIN_DECLS
GST_ELEMENT_REGISTER_DECLARE(kvxdemosaic)
G_END_DECLS
