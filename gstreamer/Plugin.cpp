// The entry point of the plug-in.
#include "gstreamer/Element.h"

namespace {

gboolean Init(GstPlugin* plugin) {
    return GST_ELEMENT_REGISTER(kvxdemosaic, plugin);
}

}  // namespace

#define PACKAGE "KvxDemosaicing"
#define GST_PACKAGE_ORIGIN "Unknown package origin"  // GStreamer's default
GST_PLUGIN_DEFINE(GST_VERSION_MAJOR, GST_VERSION_MINOR, kvxdemosaicing, "Demosaicing of camera frames", Init,
                  KVX_VERSION, "Apache 2.0", PACKAGE, GST_PACKAGE_ORIGIN)
