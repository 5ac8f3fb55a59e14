#include "KvxMisc/KvxParamStorage.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr uint32_t kUnknown = 0x80000002, kWrongType = 0x80000003, kOutOfRange = 0x80000004, kReadOnly = 0x80000005,
                   kTooSmall = 0x80000006, kInvalid = 0x80000007, kNull = 0x80000008;

class ParamStorage : public testing::Test {
protected:
    ParamStorage() {
        AddInt("count", -5, 5, &m_count);
        AddInt("flag", 0, 1, &m_flag);
        AddInt("wide", INT64_MIN, INT64_MAX, &m_wide);
        AddFloat("gain", DBL_MIN, DBL_MAX, &m_gain);  // DBL_MIN: no lower bound
        AddFloat("ratio", 0.25, 0.75, &m_ratio);
        _KvxStParam readOnly = Describe("fixed", KvxParamType_Int, &m_fixed);
        readOnly.flags = KvxParamAccess_Read;
        readOnly.maxValue.asInt = 9;
        EXPECT_EQ(m_storage.AddParam(&readOnly), 0u);
    }

    static _KvxStParam Describe(const char* name, uint32_t type, void* value) {
        _KvxStParam param{};
        param.type = type;
        param.flags = 3;
        std::strcpy(param.name, name);
        param.value = value;
        return param;
    }
    void AddInt(const char* name, int64_t minimum, int64_t maximum, int64_t* value) {
        _KvxStParam param = Describe(name, KvxParamType_Int, value);
        param.minValue.asInt = minimum;
        param.maxValue.asInt = maximum;
        EXPECT_EQ(m_storage.AddParam(&param), 0u);
    }
    void AddFloat(const char* name, double minimum, double maximum, double* value) {
        _KvxStParam param = Describe(name, KvxParamType_Float, value);
        param.minValue.asFloat = minimum;
        param.maxValue.asFloat = maximum;
        EXPECT_EQ(m_storage.AddParam(&param), 0u);
    }
    uint32_t SetText(const char* name, std::string text) {
        return m_storage.SetParamAsString(name, text.data(), true);
    }
    std::string GetText(const char* name) {
        char buffer[64];
        unsigned int size = sizeof buffer;
        EXPECT_EQ(m_storage.GetParamAsString(name, buffer, &size, nullptr), 0u);
        return buffer;
    }

    KvxParamStorage m_storage{0};
    int64_t m_count = 1, m_flag = 0, m_wide = 0, m_fixed = 7;
    double m_gain = 1.0, m_ratio = 0.5;
};

TEST_F(ParamStorage, IntegersKeepTheirRange) {
    for (const auto& [value, result] : {std::pair{-6L, kOutOfRange}, {-5L, 0u}, {5L, 0u}, {6L, kOutOfRange}}) {
        m_count = 1;
        EXPECT_EQ(m_storage.SetParamInt("count", value, true), result) << value;
        EXPECT_EQ(m_count, result == 0 ? value : 1) << value;
    }
    m_count = 3;  // the store holds no copy: what the owner writes is what callers read
    long read = 0;
    EXPECT_EQ(m_storage.GetParamInt("count", &read), 0u);
    EXPECT_EQ(read, 3);
}

TEST_F(ParamStorage, FloatsAreFiniteAndKeepTheirRange) {
    const double infinity = std::numeric_limits<double>::infinity();
    const auto expect = [this](const char* name, uint32_t result, std::initializer_list<double> values) {
        for (const double value : values) {
            m_gain = m_ratio = 0.5;
            EXPECT_EQ(m_storage.SetParamFloat(name, value, true), result) << name << " " << value;
            double read = 0;
            EXPECT_EQ(m_storage.GetParamFloat(name, &read), 0u);
            EXPECT_EQ(read, result == 0 ? value : 0.5) << name << " " << value;
        }
    };
    expect("gain", 0, {-1.5, 0.0, -DBL_MAX, DBL_MAX});
    expect("gain", kOutOfRange, {infinity, -infinity, std::nan("")});
    expect("ratio", 0, {0.25, 0.75});
    expect("ratio", kOutOfRange, {0.2499999, 0.7500001});
}

TEST_F(ParamStorage, OnlyTheOwnerWritesAReadOnlyParameter) {
    EXPECT_EQ(m_storage.SetParamInt("fixed", 8, true), kReadOnly);
    EXPECT_EQ(SetText("fixed", "8"), kReadOnly);
    EXPECT_EQ(m_fixed, 7);
    EXPECT_EQ(m_storage.SetParamInt("fixed", 8, false), 0u);
    EXPECT_EQ(m_fixed, 8);
}

TEST_F(ParamStorage, TextReadsBackToTheSameBits) {
    for (const double value : {0.1, -0.5325000286102295, 1e-300, DBL_MAX, 5e-324, 1.0 / 3, -0.0}) {
        m_gain = value;
        const std::string text = GetText("gain");
        m_gain = 42;
        ASSERT_EQ(SetText("gain", text), 0u) << text;
        EXPECT_EQ(std::memcmp(&m_gain, &value, sizeof value), 0) << text;
    }
    for (const int64_t value : {INT64_MIN, int64_t{-1}, INT64_MAX}) {
        m_wide = value;
        EXPECT_EQ(GetText("wide"), std::to_string(value));
        EXPECT_EQ(SetText("wide", std::to_string(value)), 0u);
        EXPECT_EQ(m_wide, value);
    }
    m_gain = 0.1;
    EXPECT_EQ(GetText("gain"), "0.1");  // the shortest form
}

TEST_F(ParamStorage, TextIsReadWholeOrNotAtAll) {
    const auto expect = [this](const char* name, uint32_t result, std::initializer_list<const char*> texts) {
        for (const char* text : texts) {
            EXPECT_EQ(SetText(name, text), result) << name << " = '" << text << "'";
            EXPECT_TRUE(m_count == 1 && m_gain == 1.0 && m_ratio == 0.5);
        }
    };
    expect("count", kWrongType, {"", " 1", "1 ", "0x1", "1.0"});
    expect("count", kOutOfRange, {"6", "99999999999999999999"});
    expect("gain", kWrongType, {"one", "1,5", "1.5x"});
    expect("gain", kOutOfRange, {"nan", "inf", "1e999"});
    expect("ratio", kOutOfRange, {"1"});
    expect("nothing", kUnknown, {"1"});
}

TEST_F(ParamStorage, SmallBuffersLearnTheNeededSize) {
    m_count = -5;
    char buffer[8] = "before";
    for (const unsigned int given : {0u, 2u}) {
        unsigned int size = given;
        EXPECT_EQ(m_storage.GetParamAsString("count", buffer, &size, nullptr), kTooSmall);
        EXPECT_EQ(size, 3u);
        EXPECT_STREQ(buffer, "before");
    }
    unsigned int size = 0;
    EXPECT_EQ(m_storage.GetParamAsString("count", nullptr, &size, nullptr), kTooSmall);
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(m_storage.GetParamAsString("count", nullptr, &size, nullptr), kNull);
    EXPECT_EQ(m_storage.GetParamAsString("count", buffer, &size, nullptr), 0u);
    EXPECT_STREQ(buffer, "-5");
}

// Accessors of other types than integers: see ComponentTest.cpp.
TEST_F(ParamStorage, OtherTypesUnknownNamesAndNullArguments) {
    char text[] = "1";
    long integer = 0;
    unsigned int size = sizeof text;
    _KvxStParam param{};
    const auto expect = [](uint32_t expected, std::initializer_list<uint32_t> results) {
        for (const uint32_t& result : results) EXPECT_EQ(result, expected) << &result - results.begin();
    };
    for (const auto& [name, code] : {std::pair<const char*, uint32_t>{nullptr, kNull}, {"nothing", kUnknown}})
        expect(code,
               {m_storage.GetParamAsString(name, text, &size, nullptr), m_storage.SetParamAsString(name, text, true),
                m_storage.GetParamInt(name, &integer), m_storage.SetParamInt(name, 1, true)});
    expect(kWrongType, {m_storage.SetParamInt("gain", 1, true), m_storage.GetParamInt("gain", &integer)});
    expect(kNull, {m_storage.GetParamInt("count", nullptr), m_storage.GetParamBool("flag", nullptr),
                   m_storage.GetParamFloat("gain", nullptr), m_storage.SetParamAsString("count", nullptr, true),
                   m_storage.GetParamAsString("count", text, nullptr, nullptr), m_storage.AddParam(nullptr),
                   m_storage.GetParamByIdx(0, nullptr)});
    EXPECT_EQ(m_storage.GetParamByIdx(6, &param), kInvalid);
}

TEST_F(ParamStorage, RegistrationRefusesWhatItCannotServe) {
    int64_t value = 0;
    _KvxStParam good = Describe("new", KvxParamType_Int, &value);
    const auto refuses = [&](auto spoil) {
        _KvxStParam param = good;
        spoil(param);
        return m_storage.AddParam(&param);
    };
    EXPECT_EQ(refuses([](_KvxStParam& p) { p.value = nullptr; }), kNull);
    EXPECT_EQ(refuses([](_KvxStParam& p) { p.type = 1; }), kInvalid);
    EXPECT_EQ(refuses([](_KvxStParam& p) { p.flags = KvxParamAccess_Write; }), kInvalid);
    EXPECT_EQ(refuses([](_KvxStParam& p) { p.name[0] = 0; }), kInvalid);
    EXPECT_EQ(refuses([](_KvxStParam& p) { std::memset(p.name, 'x', sizeof p.name); }), kInvalid);
    EXPECT_EQ(refuses([](_KvxStParam& p) { std::strcpy(p.name, "count"); }), kInvalid);
    EXPECT_EQ(m_storage.GetParamCount(), 6u);
    std::memset(good.name, 'x', sizeof good.name - 1);  // the longest name there is
    EXPECT_EQ(m_storage.AddParam(&good), 0u);
    _KvxStParam read{};
    EXPECT_EQ(m_storage.GetParamByIdx(6, &read), 0u);
    EXPECT_EQ(std::memcmp(&read, &good, sizeof read), 0);
}

}  // namespace
