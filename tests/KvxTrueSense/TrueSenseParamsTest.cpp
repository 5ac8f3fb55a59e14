#include "KvxTrueSense/TrueSenseParams.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace kvx::test {
namespace {

TEST(TrueSenseParams, RowsFollowTheRecord) {
    tagTrueSenseParam record;
    size_t field = 0;
    for (const TrueSenseParamRow& row : s_trueSenseParams) {
        const void* at = row.integer ? static_cast<void*>(&(record.*row.integer)) : &(record.*row.real);
        EXPECT_EQ(static_cast<const char*>(at) - reinterpret_cast<const char*>(&record), 8 * field++) << row.name;
        EXPECT_NE(!row.integer, !row.real) << row.name;
        if (!row.integer) continue;
        for (const _KvxParamValue& value : {row.recordDefault, row.componentDefault})
            EXPECT_TRUE(value.asInt >= row.minimum.asInt && value.asInt <= row.maximum.asInt) << row.name;
    }
}

TEST(TrueSenseParams, RealDefaultsOfTheRecordAreSinglePrecisionValuesOfTheComponents) {
    for (const TrueSenseParamRow& row : s_trueSenseParams)
        if (row.real) {
            const double record = row.recordDefault.asFloat;
            EXPECT_EQ(record, static_cast<double>(static_cast<float>(record))) << row.name;
            EXPECT_NEAR(record, row.componentDefault.asFloat, 5e-7 * (1 + std::abs(record))) << row.name;
        }
}

TEST(TrueSenseParams, DefaultValuesFillTheWholeRecord) {
    tagTrueSenseParam record;
    std::memset(&record, 0xA5, sizeof record);
    EXPECT_EQ(TrueSense_DefaultValues(&record), 0u);
    EXPECT_EQ(record.impulseFilterEnable + record.sharpnessEnable + record.panRadius0, 3);
    EXPECT_EQ(record.threads_num + record.normalizationEnable + record.panRadius1 + record.panRadius2, 0);
    EXPECT_EQ(record.ISOPanSlope_0, 0.3179309666156769);
    EXPECT_EQ(record.ISOColorIntercept_4, 2080.24267578125);
    EXPECT_EQ(record.RR, 1.656999945640564);
    EXPECT_EQ(record.GB, -0.3370000123977661);
    EXPECT_EQ(record.lowLumaNoise, 0.5);
    EXPECT_EQ(record.toneTable, nullptr);
}

}  // namespace
}  // namespace kvx::test
