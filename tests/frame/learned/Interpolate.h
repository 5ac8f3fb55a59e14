/** Runs a learned interpolation from a frame in memory to a picture. */
#pragma once

#include "frame/convert/PictureSink.h"
#include "frame/convert/RawRows.h"
#include "frame/learned/LearnedInterpolator.h"

namespace kvx::frame {

inline uint32_t Interpolate(LearnedInterpolator& interpolator, const SourceView& frame, const DestinationView& picture,
                            int threads, const std::optional<NoiseLine>& noise = std::nullopt) {
    const PictureStep step{picture.format};
    const PictureSink sink(step, picture);
    const RawRows rows(frame, frame.format, nullptr, {});
    return interpolator.Convert(frame, rows.Source(), picture.format.bits, sink.Sink(), noise, threads);
}

}  // namespace kvx::frame
