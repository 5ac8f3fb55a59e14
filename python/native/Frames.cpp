#include "python/native/Frames.h"

#include "KvxFrame/Mosaic.h"
#include "KvxFrame/Relayout.h"

namespace kvx::python {
namespace py = pybind11;
using frame::Format;

namespace {

/** Fills `out`, or if that is None the result of `make()`, by `fill(view)` without the interpreter's lock. */
template <class Make, class Fill>
py::object Filled(const py::object& out, const Make& make, const Format& format, uint32_t width, uint32_t height,
                  const Fill& fill) {
    py::object array = out.is_none() ? py::object(make()) : out;
    const frame::DestinationView view = FrameDestinationOf(array, format, {width, height});
    {
        const py::gil_scoped_release noGil;
        fill(view);
    }
    return array;
}

}  // namespace

py::object Unpack(const py::object& source, const Format& format, const py::object& out, std::optional<uint32_t> width,
                  std::optional<uint32_t> height, int threads) {
    const frame::SourceView view = SourceOf(source, format, {width, height});
    const Format samples = frame::Unpacked(format);
    return Filled(
        out, [&] { return NewFrame(samples, view.width, view.height); }, samples, view.width, view.height,
        [&](const frame::DestinationView& destination) { Relayout(view, destination, threads); });
}

py::object Pack(const py::object& samples, const Format& format, const py::object& out, bool isSequence, int threads) {
    const frame::SourceView view = SourceOf(samples, frame::Unpacked(format), {});
    const auto make = [&] {
        return isSequence ? NewSequence(format, view.width, view.height) : NewFrame(format, view.width, view.height);
    };
    return Filled(out, make, format, view.width, view.height,
                  [&](const frame::DestinationView& destination) { Relayout(view, destination, threads); });
}

py::object Mosaic(const py::object& picture, const Format& format, const py::object& out, const Scene& scene,
                  int threads) {
    const frame::SourceView view = PictureOf(picture, scene.isBlueFirst);
    frame::Sensor sensor;
    sensor.panWeights = scene.panWeights;
    sensor.isLinear = scene.isLinear;
    sensor.pictureWhite = scene.white;
    sensor.noiseSeed = scene.seed;
    if (scene.analogGain) sensor.noise = frame::NoiseAt(*scene.analogGain);
    return Filled(
        out, [&] { return NewFrame(format, view.width, view.height); }, format, view.width, view.height,
        [&](const frame::DestinationView& destination) { MakeMosaic(view, destination, sensor, threads); });
}

}  // namespace kvx::python
