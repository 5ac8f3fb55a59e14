// The finish of a converter for C.
#include <algorithm>

#include "frame/c/ConverterRecord.h"
#include "frame/c/Records.h"

namespace frame = kvx::frame;
using frame::Finish;
using frame::GivenParts;
using frame::c::ChoiceOf;
using frame::c::Guarded;
using frame::c::Required;

namespace {

static_assert(frame::WhiteBalance{KvxFrameWhiteBalance_Given} == frame::WhiteBalance::Given &&
              frame::WhiteBalance{KvxFrameWhiteBalance_GreyWorld} == frame::WhiteBalance::GreyWorld &&
              frame::WhiteBalance{KvxFrameWhiteBalance_WhitePatch} == frame::WhiteBalance::WhitePatch &&
              frame::WhiteBalance{KvxFrameWhiteBalance_Auto} == frame::WhiteBalance::Auto);
static_assert(frame::ToneCurve{KvxFrameTone_Linear} == frame::ToneCurve::Linear &&
              frame::ToneCurve{KvxFrameTone_Srgb} == frame::ToneCurve::Srgb);

/** A refused finish is not kept. */
void Use(KvxFrameConverter& object, std::optional<Finish> finish, GivenParts given) {
    object.converter.SetFinish(finish, given);
    object.finish = std::move(finish);
    object.given = given;
}

/** Changes the finish, which from now on has this part itself. */
template <class Change>
uint32_t ChangeFinish(KvxFrameConverter* converter, bool GivenParts::*part, const Change& change) noexcept {
    return Guarded(converter, [&](KvxFrameConverter& object) {
        Finish finish = object.finish.value_or(Finish());
        GivenParts given = object.given;
        change(finish);
        if (part) given.*part = true;
        Use(object, std::move(finish), given);
    });
}

frame::Levels LevelsOf(const double* levels) {
    Required(levels, "levels");
    return {levels[0], levels[1], levels[2], levels[3]};
}

}  // namespace

uint32_t KvxFrameConverter_SetLook(KvxFrameConverter* converter, uint32_t look) noexcept {
    return Guarded(converter, [&](KvxFrameConverter& object) {
        std::optional<Finish> finish;
        const auto chosen = ChoiceOf(look, KvxFrameLook_Natural, "look");
        if (chosen == KvxFrameLook_Linear) finish = Finish();
        if (chosen == KvxFrameLook_Natural) finish = Finish::Natural();
        Use(object, std::move(finish), {});
    });
}

uint32_t KvxFrameConverter_SetBlackLevel(KvxFrameConverter* converter, const double levels[4]) noexcept {
    return ChangeFinish(converter, &GivenParts::blackLevel,
                        [&](Finish& finish) { finish.blackLevel = LevelsOf(levels); });
}
uint32_t KvxFrameConverter_SetWhiteLevel(KvxFrameConverter* converter, const double levels[4]) noexcept {
    return ChangeFinish(converter, &GivenParts::whiteLevel,
                        [&](Finish& finish) { finish.whiteLevel = LevelsOf(levels); });
}

uint32_t KvxFrameConverter_SetWhiteBalance(KvxFrameConverter* converter, uint32_t method) noexcept {
    return ChangeFinish(converter, nullptr, [&](Finish& finish) {
        finish.whiteBalance = ChoiceOf(method, frame::WhiteBalance::Auto, "white balance");
    });
}
uint32_t KvxFrameConverter_SetGains(KvxFrameConverter* converter, const double gains[4]) noexcept {
    return ChangeFinish(converter, &GivenParts::gains, [&](Finish& finish) {
        Required(gains, "gains");
        finish.gains = {gains[0], gains[1], gains[2], gains[3]};
        finish.whiteBalance = frame::WhiteBalance::Given;
    });
}

uint32_t KvxFrameConverter_SetExposure(KvxFrameConverter* converter, double exposure, bool adds) noexcept {
    return ChangeFinish(converter, nullptr, [&](Finish& finish) {
        finish.exposure = exposure;
        finish.autoExposure = adds;
    });
}

uint32_t KvxFrameConverter_SetMatrix(KvxFrameConverter* converter, const double matrix[9]) noexcept {
    return ChangeFinish(converter, &GivenParts::matrix, [&](Finish& finish) {
        std::copy_n(&Required(matrix, "matrix"), finish.matrix.size(), finish.matrix.begin());
    });
}

uint32_t KvxFrameConverter_SetTone(KvxFrameConverter* converter, uint32_t tone) noexcept {
    return ChangeFinish(converter, nullptr, [&](Finish& finish) {
        finish.tone = ChoiceOf(tone, frame::ToneCurve::Srgb, "tone");
        finish.table.clear();
    });
}
uint32_t KvxFrameConverter_SetToneTable(KvxFrameConverter* converter, const uint16_t* table, size_t count) noexcept {
    return ChangeFinish(converter, nullptr, [&](Finish& finish) {
        constexpr size_t kTooMany = 65537;  // SetFinish() refuses it, unread
        finish.tone = frame::ToneCurve::Table;
        finish.table.assign(std::min(count, kTooMany), 0);
        if (count < kTooMany) std::copy_n(&Required(table, "table"), count, finish.table.begin());
    });
}

uint32_t KvxFrameConverter_MeasureGrey(KvxFrameConverter* converter, const KvxFrameSource* source,
                                       const _KvxRect* place, double gains[4]) noexcept {
    return Guarded(converter, [&](KvxFrameConverter& object) {
        Required(gains, "gains");
        const frame::SourceView view = frame::c::ViewOf(source);
        Finish finish = object.finish.value_or(Finish());
        if (object.camera) finish = frame::FinishWith(*object.camera, finish, view.format, object.given);
        const frame::Gains found = frame::MeasureGainsOfGrey(view, Required(place, "place"), finish);
        const double values[] = {found.red, found.green, found.blue, found.pan};
        std::copy(std::begin(values), std::end(values), gains);
    });
}
