#!/bin/sh
# GStreamer finds the plug-in, takes its licence for one that it knows, has what the document says, and plugs it itself.
set -eu
description=$(gst-inspect-1.0 kvxdemosaic)
for text in 'License  *Apache 2.0' 'video/x-bayer' 'video/x-kvx-truesense' 'white-balance  *: ' 'GstBaseTransform'; do
    echo "$description" | grep -q "$text" || { echo "gst-inspect-1.0 does not say '$text'"; exit 1; }
done
for plugger in decodebin autovideoconvert; do
    gst-launch-1.0 -v videotestsrc num-buffers=1 ! rgb2bayer ! "$plugger" ! fakesink | grep -q KvxDemosaic ||
        { echo "$plugger does not find the element"; exit 1; }
done
if gst-inspect-1.0 -b | grep kvx; then
    echo "the plug-in is on GStreamer's list of broken ones"
    exit 1
fi
