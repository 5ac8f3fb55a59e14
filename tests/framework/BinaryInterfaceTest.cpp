// The order of virtual functions, which callers compiled earlier rely on.
#include <gtest/gtest.h>

#include <cstring>

#include "KvxBayer/ipp/DemosaicingIPP.h"
#include "KvxDemosaicing/KvxBayer.h"
#include "KvxDemosaicing/KvxTrueSense.h"
#include "KvxTrueSense/IDemConvertion.h"

namespace {

/** Entry in the virtual table: in the Itanium C++ ABI a pointer to a virtual member is 1 + its byte offset there. */
template <class Member>
size_t Entry(Member member) {
    std::ptrdiff_t raw = 0;
    std::memcpy(&raw, &member, sizeof raw);
    return static_cast<size_t>(raw - 1) / sizeof(void*);
}

/** True when the entries follow each other from `first` on. A virtual destructor takes the two entries before. */
bool InOrder(size_t first, std::initializer_list<size_t> entries) {
    for (const size_t entry : entries)
        if (entry != first++) return false;
    return true;
}

TEST(BinaryInterface, OrderOfVirtualFunctions) {
    using C = KvxComponent;
    EXPECT_TRUE(InOrder(
        2,
        {Entry(&C::GetComponentTypeID), Entry(&C::GetParamCount), Entry(&C::GetParamName), Entry(&C::GetParamAsString),
         Entry(&C::SetParamAsString), Entry(&C::SetParamBool), Entry(&C::SetParamInt), Entry(&C::SetParamFloat),
         Entry(&C::SetParamString), Entry(&C::SetParamArray), Entry(&C::GetParamBool), Entry(&C::GetParamInt),
         Entry(&C::GetParamFloat), Entry(&C::GetParamString), Entry(&C::GetParamArray), Entry(&C::RunCommand)}));
    EXPECT_TRUE(InOrder(0, {Entry(&KvxBayer::GetComponent), Entry(&KvxBayer::ConvertImage), Entry(&KvxBayer::AllocData),
                            Entry(&KvxBayer::ReleaseData)}));
    EXPECT_TRUE(InOrder(0, {Entry(&KvxTrueSense::GetComponent), Entry(&KvxTrueSense::ConvertImage),
                            Entry(&KvxTrueSense::AllocData), Entry(&KvxTrueSense::ReleaseData)}));
    using I = kvx::DemosaicingIPP;
    EXPECT_TRUE(InOrder(2, {Entry(&I::Init), Entry(&I::Calculate), Entry(&I::CleanMemory)}));
    EXPECT_TRUE(InOrder(2, {Entry(&kvx::IDemosaicing::CleanMemory), Entry(&kvx::IDemosaicing::IsThis)}));
    using D = kvx::IDemConvertion<unsigned short>;
    EXPECT_TRUE(InOrder(2, {Entry(&D::SetOutputPixelType), Entry(&D::Init), Entry(&D::Calculate), Entry(&D::InitRGB),
                            Entry(&D::CalculateRGB)}));
}

}  // namespace
