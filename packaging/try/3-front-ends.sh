# The Python module and the GStreamer element, if their packages were built.
. /root/try/common
if has_package python3-kvxdemosaicing; then
    get python3-kvxdemosaicing
    cd /
    python3 -c '
import numpy, kvxdemosaicing
picture = kvxdemosaicing.convert(numpy.full((16, 16), 100, numpy.uint8), "BayerRG8", to="RGB8")
assert picture.shape == (16, 16, 3) and (picture == 100).all(), picture'
    echo "the Python module converts a frame"
else
    echo "no package of the Python module"
fi
if has_package gstreamer1.0-kvxdemosaic; then
    get gstreamer1.0-kvxdemosaic gstreamer1.0-tools gstreamer1.0-plugins-bad
    gst-inspect-1.0 kvxdemosaic > /dev/null
    gst-launch-1.0 -q videotestsrc num-buffers=3 ! video/x-raw,width=320,height=240 ! rgb2bayer ! \
        video/x-bayer,format=rggb ! kvxdemosaic ! video/x-raw,format=RGB ! filesink location=/tmp/frames
    [ "$(stat -c %s /tmp/frames)" -eq $((3 * 320 * 240 * 3)) ]
    echo "the GStreamer element converts frames"
else
    echo "no package of the GStreamer element"
fi
