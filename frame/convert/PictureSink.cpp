#include "frame/convert/PictureSink.h"

namespace kvx::frame {

PictureSink::PictureSink(const PictureStep& step, const DestinationView& destination)
    : m_step(step),
      m_data(static_cast<uint8_t*>(destination.data)),
      m_stride(destination.stride != 0 ? destination.stride
                                       : static_cast<ptrdiff_t>(RowBytes(destination.format, destination.width))),
      m_pixelBytes(RowBytes(destination.format, 1)) {}

void PictureSink::Write(uint32_t row, uint32_t column, uint32_t count, const PixelPlanes& planes) const noexcept {
    MakePictureRow(m_step, planes, count, m_data + row * m_stride + column * m_pixelBytes);
}

KvxPixelSink PictureSink::Sink() const {
    // The function below only reads the object.
    return {const_cast<PictureSink*>(this),
            [](void* sink, uint32_t row, uint32_t column, uint32_t count, const uint16_t* red, const uint16_t* green,
               const uint16_t* blue) noexcept {
                static_cast<const PictureSink*>(sink)->Write(row, column, count, {red, green, blue});
            }};
}

}  // namespace kvx::frame
