// The parameter interface of a component, in C++ and in C.
#include <gtest/gtest.h>

#include <cstring>

#include "KvxDemosaicing/KvxBayer.h"

namespace {

class Component : public testing::Test {
protected:
    ~Component() override {
        KvxBayer::DeleteComponent(m_bayer);
    }
    KvxBayer* m_bayer = KvxBayer::CreateComponent();
    KvxComponent* m_component = KvxBayer_GetComponent(m_bayer);
};

TEST_F(Component, NamesByIndex) {
    EXPECT_EQ(m_component->GetComponentTypeID(), 5);
    ASSERT_EQ(m_component->GetParamCount(), 2u);
    char buffer[20];
    uint32_t size = 13;
    std::memset(buffer, 'x', sizeof buffer);
    EXPECT_EQ(m_component->GetParamName(0, buffer, &size), 0u);  // exactly length + 1
    EXPECT_STREQ(buffer, "BayerAlgType");
    EXPECT_EQ(buffer[13], 'x');
    size = 12;
    std::memset(buffer, 'x', sizeof buffer);
    EXPECT_EQ(m_component->GetParamName(0, buffer, &size), 0x80050006u);
    EXPECT_EQ(size, 13u);
    EXPECT_EQ(buffer[0], 'x');
    size = sizeof buffer;
    EXPECT_EQ(m_component->GetParamName(1, buffer, &size), 0u);
    EXPECT_STREQ(buffer, "NoRealloc");
    EXPECT_EQ(buffer[19], '\0');  // padded to the end
    EXPECT_EQ(m_component->GetParamName(2, buffer, &size), 0u);
    EXPECT_STREQ(buffer, "");
    size = 0;
    EXPECT_EQ(m_component->GetParamName(99, nullptr, &size), 0x80050006u);
    EXPECT_EQ(size, 1u);
    EXPECT_EQ(m_component->GetParamName(0, buffer, nullptr), 0x80050008u);
}

TEST_F(Component, TheDescriptorTellsRangeDefaultAndAddress) {
    _KvxStParam param{};
    ASSERT_EQ(KvxComponent_GetParamByIdx(m_component, 0, &param), 0u);
    EXPECT_STREQ(param.name, "BayerAlgType");
    EXPECT_EQ(param.type, 0u);
    EXPECT_EQ(param.flags, 3u);
    EXPECT_EQ(param.defaultValue.asInt, 0);
    EXPECT_EQ(param.minValue.asInt, 0);
    EXPECT_EQ(param.maxValue.asInt, 4);
    int64_t value = 0;
    bool flag = false;
    EXPECT_EQ(KvxComponent_SetParamInt(m_component, "BayerAlgType", 4), 0u);
    EXPECT_EQ(KvxComponent_GetParamInt(m_component, "BayerAlgType", &value), 0u);
    EXPECT_TRUE(value == 4 && *static_cast<int64_t*>(param.value) == 4);
    EXPECT_EQ(KvxComponent_SetParamBool(m_component, "NoRealloc", true), 0u);
    EXPECT_EQ(KvxComponent_GetParamBool(m_component, "NoRealloc", &flag), 0u);
    EXPECT_EQ(KvxComponent_GetParamInt(m_component, "NoRealloc", &value), 0u);
    EXPECT_TRUE(flag && value == 1);
}

TEST_F(Component, AccessorsOfOtherTypesAndOfCommandsRefuse) {
    char text[8] = "1";
    uint32_t size = sizeof text;
    bool flag = false;
    double number = 0;
    for (const auto& [name, expected] : {std::pair<const char*, uint32_t>{"BayerAlgType", 0x80000003},
                                         {"NoSuchName", 0x80000002},
                                         {nullptr, 0x80000008}})
        for (const uint32_t result :
             {m_component->GetParamBool(name, &flag), m_component->SetParamBool(name, true),
              m_component->GetParamFloat(name, &number), m_component->SetParamFloat(name, 1.0),
              m_component->GetParamString(name, text, &size), m_component->SetParamString(name, text),
              m_component->GetParamArray(name, text, &size), m_component->SetParamArray(name, text, size),
              m_component->RunCommand(name)})
            EXPECT_EQ(result, expected);
}

TEST(ComponentFunctions, RefuseANullComponent) {
    uint32_t size = 0;
    int64_t integer = 0;
    double number = 0;
    bool flag = false;
    _KvxStParam param{};
    EXPECT_EQ(KvxComponent_GetComponentTypeID(nullptr), 0u);
    EXPECT_EQ(KvxComponent_GetParamCount(nullptr), 0u);
    for (const uint32_t result :
         {KvxComponent_GetParamName(nullptr, 0, nullptr, &size),
          KvxComponent_GetParamAsString(nullptr, "", nullptr, &size), KvxComponent_SetParamAsString(nullptr, "", ""),
          KvxComponent_GetParamBool(nullptr, "", &flag), KvxComponent_SetParamBool(nullptr, "", flag),
          KvxComponent_GetParamInt(nullptr, "", &integer), KvxComponent_SetParamInt(nullptr, "", integer),
          KvxComponent_GetParamFloat(nullptr, "", &number), KvxComponent_SetParamFloat(nullptr, "", number),
          KvxComponent_GetParamByIdx(nullptr, 0, &param)})
        EXPECT_EQ(result, 0x80000008u);
}

}  // namespace
