// The element comes from the objects that the plug-in is made of, everything else from the installed plug-ins.
#include <gst/gst.h>
#include <gtest/gtest.h>

#include "gstreamer/Element.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    gst_init(&argc, &argv);
    GST_ELEMENT_REGISTER(kvxdemosaic, nullptr);
    const int result = RUN_ALL_TESTS();
    gst_deinit();  // what is left then is a leak
    return result;
}
