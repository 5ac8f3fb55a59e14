/** The destination of a conversion: pixels go through the last step into the caller's buffer. */
#pragma once

#include "KvxDemosaicing/KvxRows.h"
#include "KvxFrame/View.h"
#include "frame/convert/PictureRow.h"

namespace kvx::frame {

class PictureSink {
public:
    /** @param destination a valid view; both stay in place */
    PictureSink(const PictureStep& step, const DestinationView& destination);

    /** Writes pixels of a row. Several threads may write at the same time. @param planes as of MakePictureRow() */
    void Write(uint32_t row, uint32_t column, uint32_t count, const PixelPlanes& planes) const noexcept;

    const Format& PictureFormat() const {
        return m_step.destination;
    }

    /** For the library, which calls this object. */
    KvxPixelSink Sink() const;

private:
    const PictureStep& m_step;
    uint8_t* m_data;
    ptrdiff_t m_stride;
    size_t m_pixelBytes;
};

}  // namespace kvx::frame
