#include "KvxDemosaicing/KvxResult.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "KvxDemosaicing/KvxVersion.h"

namespace {

TEST(ResultCodes, EveryCodeHasATextOfItsOwnInEveryComponent) {
    std::set<std::string> texts;
    for (uint32_t code = 1; code <= 9; ++code) {
        const std::string text = KvxResult_Text(0x80050000 | code);
        EXPECT_EQ(text, KvxResult_Text(0x80000000 | code));
        EXPECT_EQ(text, KvxResult_Text(0x80060000 | code));
        EXPECT_EQ(text, KvxResult_Text(code));  // bare
        texts.insert(text);
    }
    texts.insert(KvxResult_Text(0));
    EXPECT_EQ(texts.size(), 10u);
    for (const uint32_t unknown :
         {10u, 0x8005000Au, 0x00050007u, 0x80040007u, 0x81050007u, 0x80050000u, 0x80000000u, 0x40050007u, 0xFFFFFFFFu})
        EXPECT_STREQ(KvxResult_Text(unknown), "unknown result code") << std::hex << unknown;
}

TEST(Version, OfTheHeadersAndTheLibraryIsTheSame) {
    EXPECT_EQ(Kvx_Version(), KVX_VERSION_NUMBER);
    EXPECT_EQ(KVX_VERSION_NUMBER, KVX_VERSION_MAJOR * 0x10000 + KVX_VERSION_MINOR * 0x100 + KVX_VERSION_PATCH);
}

}  // namespace
