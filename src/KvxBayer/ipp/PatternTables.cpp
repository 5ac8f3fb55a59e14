// The tables of the in-house interpolator, by the low byte of a pixel type.
#include "KvxBayer/ipp/DemosaicingIPP.h"
#include "KvxDemosaicing/KvxPixelFormat.h"
#include "framework/PixelFormats.h"

namespace kvx {
namespace {

constexpr uint32_t s_greenRed[] = {KvxFormat_BayerGR8, KvxFormat_BayerGR10, KvxFormat_BayerGR12, KvxFormat_BayerGR14,
                                   KvxFormat_BayerGR16};
constexpr uint32_t s_redGreen[] = {KvxFormat_BayerRG8, KvxFormat_BayerRG10, KvxFormat_BayerRG12, KvxFormat_BayerRG14,
                                   KvxFormat_BayerRG16};
constexpr uint32_t s_greenBlue[] = {KvxFormat_BayerGB8, KvxFormat_BayerGB10, KvxFormat_BayerGB12, KvxFormat_BayerGB14,
                                    KvxFormat_BayerGB16};
constexpr uint32_t s_blueGreen[] = {KvxFormat_BayerBG8, KvxFormat_BayerBG10, KvxFormat_BayerBG12, KvxFormat_BayerBG14,
                                    KvxFormat_BayerBG16};
constexpr uint32_t s_redFirst[] = {KvxFormat_RGB8,  KvxFormat_RGBa8, KvxFormat_RGB10,
                                   KvxFormat_RGB12, KvxFormat_RGB14, KvxFormat_RGB16};
constexpr uint32_t s_blueFirst[] = {KvxFormat_BGR8,  KvxFormat_BGRa8, KvxFormat_BGR10,
                                    KvxFormat_BGR12, KvxFormat_BGR14, KvxFormat_BGR16};

struct Table : std::array<uint8_t, 256> {
    template <size_t kCount>
    constexpr Table With(const uint32_t (&pixelTypes)[kCount], uint8_t value) const {
        Table table = *this;
        for (const uint32_t pixelType : pixelTypes) table[pixelType & kRowMask] = value;
        return table;
    }
};

}  // namespace

constexpr std::array<uint8_t, 256> DemosaicingIPP::s_bayerDescG = Table{}.With(s_greenRed, 1).With(s_greenBlue, 1);
constexpr std::array<uint8_t, 256> DemosaicingIPP::s_bayerDescRB =
    Table{}.With(s_greenRed, 2).With(s_redGreen, 2).With(s_greenBlue, 3).With(s_blueGreen, 3);
constexpr std::array<uint8_t, 256> DemosaicingIPP::s_RGBBGRDesc = Table{}.With(s_redFirst, 4).With(s_blueFirst, 5);

}  // namespace kvx
