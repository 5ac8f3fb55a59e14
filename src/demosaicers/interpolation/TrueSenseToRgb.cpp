#include "demosaicers/interpolation/TrueSenseToRgb.h"

#include "demosaicers/frame/PixelWriter.h"
#include "demosaicers/interpolation/TrueSenseBand.h"

namespace kvx {

template <class T>
int TrueSenseToRgb<T>::Convert() noexcept {
    const TrueSenseFrame& frame = this->Frame();
    const PixelWriter writer(frame);
    const int begin = frame.area.region.row;
    this->ForBands(begin, begin + frame.area.region.height,
                   [&](const TrueSenseWorkspace& workspace, int first, int last) {
                       ConvertBand(frame, workspace, writer, first, last);
                   });
    return KvxResult_Success;
}

template class TrueSenseToRgb<unsigned char>;
template class TrueSenseToRgb<unsigned short>;

}  // namespace kvx
