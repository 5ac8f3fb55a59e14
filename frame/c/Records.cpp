#include "frame/c/Records.h"

namespace kvx::frame::c {
namespace {

/** The fields of a record, which may be any number. */
Format Unchecked(const KvxFrameFormat& record) noexcept {
    return {static_cast<Family>(record.family), record.bits, static_cast<Layout>(record.layout), record.phase,
            static_cast<Order>(record.order)};
}

static_assert(Family{KvxFrameFamily_Mono} == Family::Mono && Family{KvxFrameFamily_Bayer} == Family::Bayer &&
              Family{KvxFrameFamily_TrueSense} == Family::TrueSense && Family{KvxFrameFamily_Colour} == Family::Colour);
static_assert(Layout{KvxFrameLayout_Plain} == Layout::Plain &&
              Layout{KvxFrameLayout_MsbAligned} == Layout::MsbAligned &&
              Layout{KvxFrameLayout_BigEndian} == Layout::BigEndian && Layout{KvxFrameLayout_Pfnc} == Layout::Pfnc &&
              Layout{KvxFrameLayout_GigE} == Layout::GigE && Layout{KvxFrameLayout_Mipi} == Layout::Mipi);
static_assert(Order{KvxFrameOrder_Rgb} == Order::Rgb && Order{KvxFrameOrder_Bgr} == Order::Bgr &&
              Order{KvxFrameOrder_Rgba} == Order::Rgba && Order{KvxFrameOrder_Bgra} == Order::Bgra &&
              Order{KvxFrameOrder_Rgbx} == Order::Rgbx && Order{KvxFrameOrder_Bgrx} == Order::Bgrx);

}  // namespace

Format FormatOf(const KvxFrameFormat* record) {
    const KvxFrameFormat& fields = Required(record, "format");
    const Format format = Unchecked(fields);
    if (!IsValid(format))
        Fail(KvxResult_InvalidArgument,
             "family {}, {} bits, layout {}, phase {}, order {}: there is no such format, see KvxFrame_FormatAt()",
             fields.family, fields.bits, fields.layout, fields.phase, fields.order);
    return format;
}

SourceView ViewOf(const KvxFrameSource* record) {
    const KvxFrameSource& from = Required(record, "source");
    return {from.data,
            from.width,
            from.height,
            from.stride,
            from.capacity,
            FormatOf(&from.format),
            from.horMirrored != 0,
            from.verMirrored != 0};
}

DestinationView ViewOf(const KvxFrameDestination* record) {
    const KvxFrameDestination& from = Required(record, "destination");
    return {from.data, from.width, from.height, from.stride, from.capacity, FormatOf(&from.format)};
}

KvxFrameFormat RecordOf(const Format& format) noexcept {
    return {static_cast<uint8_t>(format.family), format.bits, static_cast<uint8_t>(format.layout), format.phase,
            static_cast<uint8_t>(format.order)};
}

KvxFrameSource RecordOf(const SourceView& view) noexcept {
    return {view.data,
            view.stride,
            view.capacity,
            view.width,
            view.height,
            RecordOf(view.format),
            static_cast<uint8_t>(view.horMirrored),
            static_cast<uint8_t>(view.verMirrored),
            0};
}

KvxFrameDestination RecordOf(const DestinationView& view) noexcept {
    return {view.data, view.stride, view.capacity, view.width, view.height, RecordOf(view.format), {}};
}

}  // namespace kvx::frame::c
