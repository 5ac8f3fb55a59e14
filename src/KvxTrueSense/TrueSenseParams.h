/** The parameters of a TrueSense conversion: one row for each named field of the record. */
#pragma once

#include <cfloat>
#include <cstdint>
#include <iterator>

#include "KvxDemosaicing/KvxComponent.h"
#include "KvxDemosaicing/KvxTrueSense.h"

namespace kvx {

/** One parameter: exactly one of `integer` and `real` is its field. */
struct TrueSenseParamRow {
    const char* name;
    int64_t tagTrueSenseParam::*integer;
    double tagTrueSenseParam::*real;
    _KvxParamValue recordDefault;     ///< of TrueSense_DefaultValues()
    _KvxParamValue componentDefault;  ///< of a component; differs on purpose
    _KvxParamValue minimum, maximum;
};

namespace params {

constexpr TrueSenseParamRow Integer(const char* name, int64_t tagTrueSenseParam::*field, int64_t recordDefault,
                                    int64_t componentDefault, int64_t minimum, int64_t maximum) {
    return {name,
            field,
            nullptr,
            {.asInt = recordDefault},
            {.asInt = componentDefault},
            {.asInt = minimum},
            {.asInt = maximum}};
}

/** All real parameters have the same range, whose minimum means "no lower bound". */
constexpr TrueSenseParamRow Real(const char* name, double tagTrueSenseParam::*field, double recordDefault,
                                 double componentDefault) {
    return {name,
            nullptr,
            field,
            {.asFloat = recordDefault},
            {.asFloat = componentDefault},
            {.asFloat = DBL_MIN},
            {.asFloat = DBL_MAX}};
}

}  // namespace params

// The calibration values of the record are single-precision numbers written out; those of a component are decimals.
// clang-format off
inline constexpr TrueSenseParamRow s_trueSenseParams[] = {
#define KVX_FIELD(name) #name, &tagTrueSenseParam::name
    // field, record default, component default, minimum, maximum
    params::Integer(KVX_FIELD(threads_num), 0, 0, 0, 32),
    params::Integer(KVX_FIELD(normalizationEnable), 0, 0, 0, 1),
    params::Integer(KVX_FIELD(horMirrored), 0, 0, 0, 1),
    params::Integer(KVX_FIELD(verMirrored), 0, 0, 0, 1),
    params::Integer(KVX_FIELD(monoEnable), 0, 0, 0, 1),
    params::Integer(KVX_FIELD(impulseFilterEnable), 1, 0, 0, 1),
    params::Integer(KVX_FIELD(sharpnessEnable), 1, 0, 0, 1),
    params::Integer(KVX_FIELD(darkFloor), 0, 0, 0, 4096),
    params::Real(KVX_FIELD(redGain), 1.0, 1.0),
    params::Real(KVX_FIELD(greenGain), 1.0, 1.0),
    params::Real(KVX_FIELD(blueGain), 1.0, 1.0),
    params::Real(KVX_FIELD(panGain), 1.0, 1.0),
    params::Real(KVX_FIELD(globalGain), 1.0, 1.0),
    params::Real(KVX_FIELD(analogGain), 1.0, 1.0),
    params::Real(KVX_FIELD(ISOAnalogGain_0), 11.039999961853027, 11.04),
    params::Real(KVX_FIELD(ISOAnalogGain_1), 17.690000534057617, 17.69),
    params::Real(KVX_FIELD(ISOAnalogGain_2), 23.959999084472656, 23.96),
    params::Real(KVX_FIELD(ISOAnalogGain_3), 29.90999984741211, 29.91),
    params::Real(KVX_FIELD(ISOAnalogGain_4), 36.77000045776367, 36.77),
    params::Real(KVX_FIELD(ISOPanSlope_0), 0.3179309666156769, 0.3179309),
    params::Real(KVX_FIELD(ISOPanSlope_1), 0.6009852290153503, 0.6009852),
    params::Real(KVX_FIELD(ISOPanSlope_2), 1.1658761501312256, 1.16587611),
    params::Real(KVX_FIELD(ISOPanSlope_3), 2.2605955600738525, 2.26059552),
    params::Real(KVX_FIELD(ISOPanSlope_4), 5.110443115234375, 5.11044291),
    params::Real(KVX_FIELD(ISOPanIntercept_0), -25.07685661315918, -25.07685652),
    params::Real(KVX_FIELD(ISOPanIntercept_1), 17.017520904541016, 17.01752105),
    params::Real(KVX_FIELD(ISOPanIntercept_2), 185.43026733398438, 185.43026),
    params::Real(KVX_FIELD(ISOPanIntercept_3), 831.074951171875, 831.07495077),
    params::Real(KVX_FIELD(ISOPanIntercept_4), 4154.73876953125, 4154.73883603),
    params::Real(KVX_FIELD(ISOColorSlope_0), 0.16289523243904114, 0.16289523),
    params::Real(KVX_FIELD(ISOColorSlope_1), 0.30242106318473816, 0.30242107),
    params::Real(KVX_FIELD(ISOColorSlope_2), 0.5818018317222595, 0.58180185),
    params::Real(KVX_FIELD(ISOColorSlope_3), 1.1528198719024658, 1.15281985),
    params::Real(KVX_FIELD(ISOColorSlope_4), 2.5340023040771484, 2.53400236),
    params::Real(KVX_FIELD(ISOColorIntercept_0), -2.974086046218872, -2.97408598),
    params::Real(KVX_FIELD(ISOColorIntercept_1), 15.975598335266113, 15.97559859),
    params::Real(KVX_FIELD(ISOColorIntercept_2), 92.84640502929688, 92.84640595),
    params::Real(KVX_FIELD(ISOColorIntercept_3), 399.4992370605469, 399.49923562),
    params::Real(KVX_FIELD(ISOColorIntercept_4), 2080.24267578125, 2080.24259272),
    params::Integer(KVX_FIELD(panRadius0), 1, 1, 0, INT64_MAX),
    params::Integer(KVX_FIELD(panRadius1), 0, 1, 0, INT64_MAX),
    params::Integer(KVX_FIELD(panRadius2), 0, 1, 0, INT64_MAX),
    params::Real(KVX_FIELD(panSigma0), 1.7000000476837158, 1.7),
    params::Real(KVX_FIELD(panSigma1), 0.0, 0.0),
    params::Real(KVX_FIELD(panSigma2), 0.0, 0.0),
    params::Integer(KVX_FIELD(colorRadius0), 1, 1, 0, 1024),
    params::Integer(KVX_FIELD(colorRadius1), 2, 2, 0, 1024),
    params::Integer(KVX_FIELD(colorRadius2), 0, 0, 0, 1024),
    params::Real(KVX_FIELD(colorSigma0), 2.0, 2.0),
    params::Real(KVX_FIELD(colorSigma1), 2.0, 2.0),
    params::Real(KVX_FIELD(colorSigma2), 0.0, 0.0),
    params::Real(KVX_FIELD(RR), 1.656999945640564, 1.657),
    params::Real(KVX_FIELD(RG), -0.5325000286102295, -0.5325),
    params::Real(KVX_FIELD(RB), -0.12449999898672104, -0.1245),
    params::Real(KVX_FIELD(GR), -0.10599999874830246, -0.106),
    params::Real(KVX_FIELD(GG), 1.4429999589920044, 1.443),
    params::Real(KVX_FIELD(GB), -0.3370000123977661, -0.337),
    params::Real(KVX_FIELD(BR), 0.13099999725818634, 0.131),
    params::Real(KVX_FIELD(BG), -0.4449999928474426, -0.445),
    params::Real(KVX_FIELD(BB), 1.3140000104904175, 1.314),
    params::Real(KVX_FIELD(sharpenParam), 40.0, 40.0),
    params::Real(KVX_FIELD(maxSharpen), 1.0, 1.0),
    params::Real(KVX_FIELD(highLumaNoise), 2.0, 2.0),
    params::Real(KVX_FIELD(lowLumaNoise), 0.5, 0.5),
#undef KVX_FIELD
};
// clang-format on
static_assert(std::size(s_trueSenseParams) == 64);

/** A record with the defaults of TrueSense_DefaultValues(). */
constexpr tagTrueSenseParam DefaultTrueSenseParams() {
    tagTrueSenseParam record{};
    for (const TrueSenseParamRow& row : s_trueSenseParams) {
        if (row.integer)
            record.*row.integer = row.recordDefault.asInt;
        else
            record.*row.real = row.recordDefault.asFloat;
    }
    return record;
}

}  // namespace kvx
