// Regions, mirroring and layouts of views for C.
#include "KvxFrame/ViewC.h"

#include "KvxFrame/Geometry.h"
#include "KvxFrame/Relayout.h"
#include "KvxFrame/SampleDepth.h"
#include "frame/c/Records.h"

namespace frame = kvx::frame;
using frame::c::Guarded;
using frame::c::RecordOf;
using frame::c::Required;
using frame::c::ViewOf;

uint32_t KvxFrameSource_Crop(KvxFrameSource* view, const _KvxRect* region) noexcept {
    return Guarded([&] {
        const _KvxRect& place = Required(region, "region");  // compilers differ in the order of arguments
        *view = RecordOf(frame::Crop(ViewOf(view), place));
    });
}
uint32_t KvxFrameDestination_Crop(KvxFrameDestination* view, const _KvxRect* region) noexcept {
    return Guarded([&] {
        const _KvxRect& place = Required(region, "region");  // compilers differ in the order of arguments
        *view = RecordOf(frame::Crop(ViewOf(view), place));
    });
}

uint32_t KvxFrameSource_Mirror(KvxFrameSource* view, bool horizontally, bool vertically) noexcept {
    return Guarded([&] { *view = RecordOf(frame::Mirrored(ViewOf(view), horizontally, vertically)); });
}

uint32_t KvxFrameSource_Flip(KvxFrameSource* view) noexcept {
    return Guarded([&] { *view = RecordOf(frame::FlippedVertically(ViewOf(view))); });
}
uint32_t KvxFrameDestination_Flip(KvxFrameDestination* view) noexcept {
    return Guarded([&] { *view = RecordOf(frame::FlippedVertically(ViewOf(view))); });
}

uint32_t KvxFrame_Relayout(const KvxFrameSource* source, const KvxFrameDestination* destination, int threads) noexcept {
    return Guarded([&] {
        const frame::DestinationView to = ViewOf(destination);
        frame::Relayout(ViewOf(source), to, threads);
    });
}

uint32_t KvxFrame_CheckSampleDepth(const KvxFrameSource* source) noexcept {
    return Guarded([&] { frame::CheckSampleDepth(ViewOf(source)); });
}
