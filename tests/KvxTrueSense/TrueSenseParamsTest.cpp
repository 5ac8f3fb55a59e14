// The parameters of the component and the defaults of the flat functions, written out.
#include <gtest/gtest.h>

#include <cfloat>
#include <cstring>

#include "KvxDemosaicing/KvxTrueSense.h"

namespace kvx::test {
namespace {

constexpr int64_t kReal = -1;

struct Parameter {
    const char* name;
    double recordDefault, componentDefault;
    int64_t maximum = kReal;  // of an integer, whose minimum is 0
};

// clang-format off
constexpr Parameter s_ownOfComponent[] = {{"TrueSenseAlgType", 0, 0, 6}, {"NoRealloc", 0, 0, 1}};
constexpr Parameter s_fieldsOfRecord[] = {
    {"threads_num", 0, 0, 32}, {"normalizationEnable", 0, 0, 1}, {"horMirrored", 0, 0, 1}, {"verMirrored", 0, 0, 1},
    {"monoEnable", 0, 0, 1}, {"impulseFilterEnable", 1, 0, 1}, {"sharpnessEnable", 1, 0, 1}, {"darkFloor", 0, 0, 4096},
    {"redGain", 1, 1}, {"greenGain", 1, 1}, {"blueGain", 1, 1}, {"panGain", 1, 1}, {"globalGain", 1, 1},
    {"analogGain", 1, 1}, {"ISOAnalogGain_0", 11.039999961853027, 11.04},
    {"ISOAnalogGain_1", 17.690000534057617, 17.69}, {"ISOAnalogGain_2", 23.959999084472656, 23.96},
    {"ISOAnalogGain_3", 29.90999984741211, 29.91}, {"ISOAnalogGain_4", 36.77000045776367, 36.77},
    {"ISOPanSlope_0", 0.3179309666156769, 0.3179309}, {"ISOPanSlope_1", 0.6009852290153503, 0.6009852},
    {"ISOPanSlope_2", 1.1658761501312256, 1.16587611}, {"ISOPanSlope_3", 2.2605955600738525, 2.26059552},
    {"ISOPanSlope_4", 5.110443115234375, 5.11044291}, {"ISOPanIntercept_0", -25.07685661315918, -25.07685652},
    {"ISOPanIntercept_1", 17.017520904541016, 17.01752105}, {"ISOPanIntercept_2", 185.43026733398438, 185.43026},
    {"ISOPanIntercept_3", 831.074951171875, 831.07495077}, {"ISOPanIntercept_4", 4154.73876953125, 4154.73883603},
    {"ISOColorSlope_0", 0.16289523243904114, 0.16289523}, {"ISOColorSlope_1", 0.30242106318473816, 0.30242107},
    {"ISOColorSlope_2", 0.5818018317222595, 0.58180185}, {"ISOColorSlope_3", 1.1528198719024658, 1.15281985},
    {"ISOColorSlope_4", 2.5340023040771484, 2.53400236}, {"ISOColorIntercept_0", -2.974086046218872, -2.97408598},
    {"ISOColorIntercept_1", 15.975598335266113, 15.97559859}, {"ISOColorIntercept_2", 92.84640502929688, 92.84640595},
    {"ISOColorIntercept_3", 399.4992370605469, 399.49923562}, {"ISOColorIntercept_4", 2080.24267578125, 2080.24259272},
    {"panRadius0", 1, 1, INT64_MAX}, {"panRadius1", 0, 1, INT64_MAX}, {"panRadius2", 0, 1, INT64_MAX},
    {"panSigma0", 1.7000000476837158, 1.7}, {"panSigma1", 0, 0}, {"panSigma2", 0, 0}, {"colorRadius0", 1, 1, 1024},
    {"colorRadius1", 2, 2, 1024}, {"colorRadius2", 0, 0, 1024}, {"colorSigma0", 2, 2}, {"colorSigma1", 2, 2},
    {"colorSigma2", 0, 0}, {"RR", 1.656999945640564, 1.657}, {"RG", -0.5325000286102295, -0.5325},
    {"RB", -0.12449999898672104, -0.1245}, {"GR", -0.10599999874830246, -0.106}, {"GG", 1.4429999589920044, 1.443},
    {"GB", -0.3370000123977661, -0.337}, {"BR", 0.13099999725818634, 0.131}, {"BG", -0.4449999928474426, -0.445},
    {"BB", 1.3140000104904175, 1.314}, {"sharpenParam", 40, 40}, {"maxSharpen", 1, 1}, {"highLumaNoise", 2, 2},
    {"lowLumaNoise", 0.5, 0.5},
};
// clang-format on

void ExpectParameter(KvxComponent* component, uint32_t index, const Parameter& expected) {
    SCOPED_TRACE(expected.name);
    _KvxStParam found;
    ASSERT_EQ(KvxComponent_GetParamByIdx(component, index, &found), 0u);
    EXPECT_STREQ(found.name, expected.name);
    EXPECT_EQ(found.flags, 3u);
    const bool isReal = expected.maximum == kReal;
    const auto number = [=](const auto& value) { return isReal ? value.asFloat : static_cast<double>(value.asInt); };
    EXPECT_EQ(found.type, isReal ? uint32_t{KvxParamType_Float} : uint32_t{KvxParamType_Int});
    EXPECT_EQ(number(found.defaultValue), expected.componentDefault);
    EXPECT_EQ(isReal ? *static_cast<double*>(found.value) : static_cast<double>(*static_cast<int64_t*>(found.value)),
              expected.componentDefault);
    EXPECT_EQ(number(found.minValue), isReal ? DBL_MIN : 0);
    EXPECT_EQ(number(found.maxValue), isReal ? DBL_MAX : static_cast<double>(expected.maximum));
}

/** Field by field: 8 bytes each, one after the other. */
void ExpectRecord(const tagTrueSenseParam& record, double Parameter::*expected) {
    const auto* field = reinterpret_cast<const char*>(&record);
    for (const Parameter& parameter : s_fieldsOfRecord) {
        const bool isReal = parameter.maximum == kReal;
        EXPECT_EQ(isReal ? *reinterpret_cast<const double*>(field) : double(*reinterpret_cast<const int64_t*>(field)),
                  parameter.*expected)
            << parameter.name;
        field += 8;
    }
    EXPECT_EQ(record.toneTable, nullptr);
}

TEST(TrueSenseParams, AreTheseWithTheseDefaultsAndRanges) {
    KvxTrueSense* trueSense = KvxTrueSense_CreateComponent();
    KvxComponent* component = KvxTrueSense_GetComponent(trueSense);
    ASSERT_EQ(KvxComponent_GetParamCount(component), 66u);
    uint32_t index = 0;
    for (const Parameter& parameter : s_ownOfComponent) ExpectParameter(component, index++, parameter);
    for (const Parameter& parameter : s_fieldsOfRecord) ExpectParameter(component, index++, parameter);
    tagTrueSenseParam record;
    std::memset(&record, 0xA5, sizeof record);
    ASSERT_EQ(TrueSense_DefaultValues(&record), 0u);
    ExpectRecord(record, &Parameter::recordDefault);
    ASSERT_EQ(KvxTrueSense_GetParams(trueSense, &record), 0u);
    ExpectRecord(record, &Parameter::componentDefault);
    EXPECT_EQ(KvxTrueSense_GetParams(nullptr, &record), 0x80060007u);
    EXPECT_EQ(KvxTrueSense_GetParams(trueSense, nullptr), 0x80060007u);
    KvxTrueSense_DeleteComponent(trueSense);
}

}  // namespace
}  // namespace kvx::test
