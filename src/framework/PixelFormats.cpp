#include "framework/PixelFormats.h"

#include <iterator>
#include <string_view>
#include <utility>

namespace kvx {
namespace {

// clang-format off
constexpr _KvxPixelFormat s_colorModelDescription[] = {
    // name, components, count, bits, 0, getIndex, phase, pixelType
    {"Mono8", "Y", 1, 8, 0, GetIndexMONO, 0, KvxFormat_Mono8},
    {"Mono10", "Y", 1, 10, 0, GetIndexMONO, 0, KvxFormat_Mono10},
    {"Mono10p", "Y", 1, 10, 0, GetIndexMONO, 0, KvxFormat_Mono10p},
    {"Mono10Packed", "Y", 1, 10, 0, GetIndexMONO, 0, KvxFormat_Mono10Packed},
    {"Mono10_FLExPacked", "Y", 1, 10, 0, GetIndexMONO, 0, KvxFormat_Mono10_FLExPacked},
    {"Mono12", "Y", 1, 12, 0, GetIndexMONO, 0, KvxFormat_Mono12},
    {"Mono12p", "Y", 1, 12, 0, GetIndexMONO, 0, KvxFormat_Mono12p},
    {"Mono12Packed", "Y", 1, 12, 0, GetIndexMONO, 0, KvxFormat_Mono12Packed},
    {"Mono12_FLExPacked", "Y", 1, 12, 0, GetIndexMONO, 0, KvxFormat_Mono12_FLExPacked},
    {"Mono14", "Y", 1, 14, 0, GetIndexMONO, 0, KvxFormat_Mono14},
    {"Mono16", "Y", 1, 16, 0, GetIndexMONO, 0, KvxFormat_Mono16},
    {"Mono8_FLExPacked", "Y", 1, 8, 0, GetIndexMONO, 0, KvxFormat_Mono8_FLExPacked},
    {"BayerGR8", "G R G2 B", 1, 8, 0, GetIndexMONO, 0, KvxFormat_BayerGR8},
    {"BayerRG8", "R G B G2", 1, 8, 0, GetIndexMONO, 0, KvxFormat_BayerRG8},
    {"BayerGB8", "G B G2 R", 1, 8, 0, GetIndexMONO, 0, KvxFormat_BayerGB8},
    {"BayerBG8", "B G R G2", 1, 8, 0, GetIndexMONO, 0, KvxFormat_BayerBG8},
    {"BayerGR10", "G R G2 B", 1, 10, 0, GetIndexMONO, 0, KvxFormat_BayerGR10},
    {"BayerRG10", "R G B G2", 1, 10, 0, GetIndexMONO, 0, KvxFormat_BayerRG10},
    {"BayerGB10", "G B G2 R", 1, 10, 0, GetIndexMONO, 0, KvxFormat_BayerGB10},
    {"BayerBG10", "B G R G2", 1, 10, 0, GetIndexMONO, 0, KvxFormat_BayerBG10},
    {"BayerGR12", "G R G2 B", 1, 12, 0, GetIndexMONO, 0, KvxFormat_BayerGR12},
    {"BayerRG12", "R G B G2", 1, 12, 0, GetIndexMONO, 0, KvxFormat_BayerRG12},
    {"BayerGB12", "G B G2 R", 1, 12, 0, GetIndexMONO, 0, KvxFormat_BayerGB12},
    {"BayerBG12", "B G R G2", 1, 12, 0, GetIndexMONO, 0, KvxFormat_BayerBG12},
    {"BayerGR10p", "G R G2 B", 1, 10, 0, GetIndexMONO, 0, KvxFormat_BayerGR10p},
    {"BayerGR10Packed", "G R G2 B", 1, 10, 0, GetIndexMONO, 0, KvxFormat_BayerGR10Packed},
    {"BayerRG10p", "R G B G2", 1, 10, 0, GetIndexMONO, 0, KvxFormat_BayerRG10p},
    {"BayerRG10Packed", "R G B G2", 1, 10, 0, GetIndexMONO, 0, KvxFormat_BayerRG10Packed},
    {"BayerGB10p", "G B G2 R", 1, 10, 0, GetIndexMONO, 0, KvxFormat_BayerGB10p},
    {"BayerGB10Packed", "G B G2 R", 1, 10, 0, GetIndexMONO, 0, KvxFormat_BayerGB10Packed},
    {"BayerBG10p", "B G R G2", 1, 10, 0, GetIndexMONO, 0, KvxFormat_BayerBG10p},
    {"BayerBG10Packed", "B G R G2", 1, 10, 0, GetIndexMONO, 0, KvxFormat_BayerBG10Packed},
    {"BayerGR12p", "G R G2 B", 1, 12, 0, GetIndexMONO, 0, KvxFormat_BayerGR12p},
    {"BayerGR12Packed", "G R G2 B", 1, 12, 0, GetIndexMONO, 0, KvxFormat_BayerGR12Packed},
    {"BayerRG12p", "R G B G2", 1, 12, 0, GetIndexMONO, 0, KvxFormat_BayerRG12p},
    {"BayerRG12Packed", "R G B G2", 1, 12, 0, GetIndexMONO, 0, KvxFormat_BayerRG12Packed},
    {"BayerGB12p", "G B G2 R", 1, 12, 0, GetIndexMONO, 0, KvxFormat_BayerGB12p},
    {"BayerGB12Packed", "G B G2 R", 1, 12, 0, GetIndexMONO, 0, KvxFormat_BayerGB12Packed},
    {"BayerBG12p", "B G R G2", 1, 12, 0, GetIndexMONO, 0, KvxFormat_BayerBG12p},
    {"BayerBG12Packed", "B G R G2", 1, 12, 0, GetIndexMONO, 0, KvxFormat_BayerBG12Packed},
    {"BayerGR14", "G R G2 B", 1, 14, 0, GetIndexMONO, 0, KvxFormat_BayerGR14},
    {"BayerRG14", "R G B G2", 1, 14, 0, GetIndexMONO, 0, KvxFormat_BayerRG14},
    {"BayerGB14", "G B G2 R", 1, 14, 0, GetIndexMONO, 0, KvxFormat_BayerGB14},
    {"BayerBG14", "B G R G2", 1, 14, 0, GetIndexMONO, 0, KvxFormat_BayerBG14},
    {"BayerGR16", "G R G2 B", 1, 16, 0, GetIndexMONO, 0, KvxFormat_BayerGR16},
    {"BayerRG16", "R G B G2", 1, 16, 0, GetIndexMONO, 0, KvxFormat_BayerRG16},
    {"BayerGB16", "G B G2 R", 1, 16, 0, GetIndexMONO, 0, KvxFormat_BayerGB16},
    {"BayerBG16", "B G R G2", 1, 16, 0, GetIndexMONO, 0, KvxFormat_BayerBG16},
    {"TrueSense_BGGR_WBBW_0_8", "W B W G B W G W W G W R G W R W", 1, 8, 0, GetIndexMONO, 0, KvxFormat_TrueSense_BGGR_WBBW_0_8},
    {"TrueSense_BGGR_WBBW_1_8", "W B W G B W G W W G W R G W R W", 1, 8, 0, GetIndexMONO, 1, KvxFormat_TrueSense_BGGR_WBBW_1_8},
    {"TrueSense_BGGR_WBBW_2_8", "W B W G B W G W W G W R G W R W", 1, 8, 0, GetIndexMONO, 2, KvxFormat_TrueSense_BGGR_WBBW_2_8},
    {"TrueSense_BGGR_WBBW_3_8", "W B W G B W G W W G W R G W R W", 1, 8, 0, GetIndexMONO, 3, KvxFormat_TrueSense_BGGR_WBBW_3_8},
    {"TrueSense_GBRG_WGGW_0_8", "W G W B G W B W W R W G R W G W", 1, 8, 0, GetIndexMONO, 0, KvxFormat_TrueSense_GBRG_WGGW_0_8},
    {"TrueSense_GBRG_WGGW_1_8", "W G W B G W B W W R W G R W G W", 1, 8, 0, GetIndexMONO, 1, KvxFormat_TrueSense_GBRG_WGGW_1_8},
    {"TrueSense_GBRG_WGGW_2_8", "W G W B G W B W W R W G R W G W", 1, 8, 0, GetIndexMONO, 2, KvxFormat_TrueSense_GBRG_WGGW_2_8},
    {"TrueSense_GBRG_WGGW_3_8", "W G W B G W B W W R W G R W G W", 1, 8, 0, GetIndexMONO, 3, KvxFormat_TrueSense_GBRG_WGGW_3_8},
    {"TrueSense_GRBG_WGGW_0_8", "W G W R G W R W W B W G B W G W", 1, 8, 0, GetIndexMONO, 0, KvxFormat_TrueSense_GRBG_WGGW_0_8},
    {"TrueSense_GRBG_WGGW_1_8", "W G W R G W R W W B W G B W G W", 1, 8, 0, GetIndexMONO, 1, KvxFormat_TrueSense_GRBG_WGGW_1_8},
    {"TrueSense_GRBG_WGGW_2_8", "W G W R G W R W W B W G B W G W", 1, 8, 0, GetIndexMONO, 2, KvxFormat_TrueSense_GRBG_WGGW_2_8},
    {"TrueSense_GRBG_WGGW_3_8", "W G W R G W R W W B W G B W G W", 1, 8, 0, GetIndexMONO, 3, KvxFormat_TrueSense_GRBG_WGGW_3_8},
    {"TrueSense_RGGB_WRRW_0_8", "W R W G R W G W W G W B G W B W", 1, 8, 0, GetIndexMONO, 0, KvxFormat_TrueSense_RGGB_WRRW_0_8},
    {"TrueSense_RGGB_WRRW_1_8", "W R W G R W G W W G W B G W B W", 1, 8, 0, GetIndexMONO, 1, KvxFormat_TrueSense_RGGB_WRRW_1_8},
    {"TrueSense_RGGB_WRRW_2_8", "W R W G R W G W W G W B G W B W", 1, 8, 0, GetIndexMONO, 2, KvxFormat_TrueSense_RGGB_WRRW_2_8},
    {"TrueSense_RGGB_WRRW_3_8", "W R W G R W G W W G W B G W B W", 1, 8, 0, GetIndexMONO, 3, KvxFormat_TrueSense_RGGB_WRRW_3_8},
    {"TrueSense_BGGR_WBBW_0_10", "W B W G B W G W W G W R G W R W", 1, 10, 0, GetIndexMONO, 0, KvxFormat_TrueSense_BGGR_WBBW_0_10},
    {"TrueSense_BGGR_WBBW_1_10", "W B W G B W G W W G W R G W R W", 1, 10, 0, GetIndexMONO, 1, KvxFormat_TrueSense_BGGR_WBBW_1_10},
    {"TrueSense_BGGR_WBBW_2_10", "W B W G B W G W W G W R G W R W", 1, 10, 0, GetIndexMONO, 2, KvxFormat_TrueSense_BGGR_WBBW_2_10},
    {"TrueSense_BGGR_WBBW_3_10", "W B W G B W G W W G W R G W R W", 1, 10, 0, GetIndexMONO, 3, KvxFormat_TrueSense_BGGR_WBBW_3_10},
    {"TrueSense_GBRG_WGGW_0_10", "W G W B G W B W W R W G R W G W", 1, 10, 0, GetIndexMONO, 0, KvxFormat_TrueSense_GBRG_WGGW_0_10},
    {"TrueSense_GBRG_WGGW_1_10", "W G W B G W B W W R W G R W G W", 1, 10, 0, GetIndexMONO, 1, KvxFormat_TrueSense_GBRG_WGGW_1_10},
    {"TrueSense_GBRG_WGGW_2_10", "W G W B G W B W W R W G R W G W", 1, 10, 0, GetIndexMONO, 2, KvxFormat_TrueSense_GBRG_WGGW_2_10},
    {"TrueSense_GBRG_WGGW_3_10", "W G W B G W B W W R W G R W G W", 1, 10, 0, GetIndexMONO, 3, KvxFormat_TrueSense_GBRG_WGGW_3_10},
    {"TrueSense_GRBG_WGGW_0_10", "W G W R G W R W W B W G B W G W", 1, 10, 0, GetIndexMONO, 0, KvxFormat_TrueSense_GRBG_WGGW_0_10},
    {"TrueSense_GRBG_WGGW_1_10", "W G W R G W R W W B W G B W G W", 1, 10, 0, GetIndexMONO, 1, KvxFormat_TrueSense_GRBG_WGGW_1_10},
    {"TrueSense_GRBG_WGGW_2_10", "W G W R G W R W W B W G B W G W", 1, 10, 0, GetIndexMONO, 2, KvxFormat_TrueSense_GRBG_WGGW_2_10},
    {"TrueSense_GRBG_WGGW_3_10", "W G W R G W R W W B W G B W G W", 1, 10, 0, GetIndexMONO, 3, KvxFormat_TrueSense_GRBG_WGGW_3_10},
    {"TrueSense_RGGB_WRRW_0_10", "W R W G R W G W W G W B G W B W", 1, 10, 0, GetIndexMONO, 0, KvxFormat_TrueSense_RGGB_WRRW_0_10},
    {"TrueSense_RGGB_WRRW_1_10", "W R W G R W G W W G W B G W B W", 1, 10, 0, GetIndexMONO, 1, KvxFormat_TrueSense_RGGB_WRRW_1_10},
    {"TrueSense_RGGB_WRRW_2_10", "W R W G R W G W W G W B G W B W", 1, 10, 0, GetIndexMONO, 2, KvxFormat_TrueSense_RGGB_WRRW_2_10},
    {"TrueSense_RGGB_WRRW_3_10", "W R W G R W G W W G W B G W B W", 1, 10, 0, GetIndexMONO, 3, KvxFormat_TrueSense_RGGB_WRRW_3_10},
    {"TrueSense_BGGR_WBBW_0_12", "W B W G B W G W W G W R G W R W", 1, 12, 0, GetIndexMONO, 0, KvxFormat_TrueSense_BGGR_WBBW_0_12},
    {"TrueSense_BGGR_WBBW_1_12", "W B W G B W G W W G W R G W R W", 1, 12, 0, GetIndexMONO, 1, KvxFormat_TrueSense_BGGR_WBBW_1_12},
    {"TrueSense_BGGR_WBBW_2_12", "W B W G B W G W W G W R G W R W", 1, 12, 0, GetIndexMONO, 2, KvxFormat_TrueSense_BGGR_WBBW_2_12},
    {"TrueSense_BGGR_WBBW_3_12", "W B W G B W G W W G W R G W R W", 1, 12, 0, GetIndexMONO, 3, KvxFormat_TrueSense_BGGR_WBBW_3_12},
    {"TrueSense_GBRG_WGGW_0_12", "W G W B G W B W W R W G R W G W", 1, 12, 0, GetIndexMONO, 0, KvxFormat_TrueSense_GBRG_WGGW_0_12},
    {"TrueSense_GBRG_WGGW_1_12", "W G W B G W B W W R W G R W G W", 1, 12, 0, GetIndexMONO, 1, KvxFormat_TrueSense_GBRG_WGGW_1_12},
    {"TrueSense_GBRG_WGGW_2_12", "W G W B G W B W W R W G R W G W", 1, 12, 0, GetIndexMONO, 2, KvxFormat_TrueSense_GBRG_WGGW_2_12},
    {"TrueSense_GBRG_WGGW_3_12", "W G W B G W B W W R W G R W G W", 1, 12, 0, GetIndexMONO, 3, KvxFormat_TrueSense_GBRG_WGGW_3_12},
    {"TrueSense_GRBG_WGGW_0_12", "W G W R G W R W W B W G B W G W", 1, 12, 0, GetIndexMONO, 0, KvxFormat_TrueSense_GRBG_WGGW_0_12},
    {"TrueSense_GRBG_WGGW_1_12", "W G W R G W R W W B W G B W G W", 1, 12, 0, GetIndexMONO, 1, KvxFormat_TrueSense_GRBG_WGGW_1_12},
    {"TrueSense_GRBG_WGGW_2_12", "W G W R G W R W W B W G B W G W", 1, 12, 0, GetIndexMONO, 2, KvxFormat_TrueSense_GRBG_WGGW_2_12},
    {"TrueSense_GRBG_WGGW_3_12", "W G W R G W R W W B W G B W G W", 1, 12, 0, GetIndexMONO, 3, KvxFormat_TrueSense_GRBG_WGGW_3_12},
    {"TrueSense_RGGB_WRRW_0_12", "W R W G R W G W W G W B G W B W", 1, 12, 0, GetIndexMONO, 0, KvxFormat_TrueSense_RGGB_WRRW_0_12},
    {"TrueSense_RGGB_WRRW_1_12", "W R W G R W G W W G W B G W B W", 1, 12, 0, GetIndexMONO, 1, KvxFormat_TrueSense_RGGB_WRRW_1_12},
    {"TrueSense_RGGB_WRRW_2_12", "W R W G R W G W W G W B G W B W", 1, 12, 0, GetIndexMONO, 2, KvxFormat_TrueSense_RGGB_WRRW_2_12},
    {"TrueSense_RGGB_WRRW_3_12", "W R W G R W G W W G W B G W B W", 1, 12, 0, GetIndexMONO, 3, KvxFormat_TrueSense_RGGB_WRRW_3_12},
    {"TrueSense_BGGR_WBBW_0_14", "W B W G B W G W W G W R G W R W", 1, 14, 0, GetIndexMONO, 0, KvxFormat_TrueSense_BGGR_WBBW_0_14},
    {"TrueSense_BGGR_WBBW_1_14", "W B W G B W G W W G W R G W R W", 1, 14, 0, GetIndexMONO, 1, KvxFormat_TrueSense_BGGR_WBBW_1_14},
    {"TrueSense_BGGR_WBBW_2_14", "W B W G B W G W W G W R G W R W", 1, 14, 0, GetIndexMONO, 2, KvxFormat_TrueSense_BGGR_WBBW_2_14},
    {"TrueSense_BGGR_WBBW_3_14", "W B W G B W G W W G W R G W R W", 1, 14, 0, GetIndexMONO, 3, KvxFormat_TrueSense_BGGR_WBBW_3_14},
    {"TrueSense_GBRG_WGGW_0_14", "W G W B G W B W W R W G R W G W", 1, 14, 0, GetIndexMONO, 0, KvxFormat_TrueSense_GBRG_WGGW_0_14},
    {"TrueSense_GBRG_WGGW_1_14", "W G W B G W B W W R W G R W G W", 1, 14, 0, GetIndexMONO, 1, KvxFormat_TrueSense_GBRG_WGGW_1_14},
    {"TrueSense_GBRG_WGGW_2_14", "W G W B G W B W W R W G R W G W", 1, 14, 0, GetIndexMONO, 2, KvxFormat_TrueSense_GBRG_WGGW_2_14},
    {"TrueSense_GBRG_WGGW_3_14", "W G W B G W B W W R W G R W G W", 1, 14, 0, GetIndexMONO, 3, KvxFormat_TrueSense_GBRG_WGGW_3_14},
    {"TrueSense_GRBG_WGGW_0_14", "W G W R G W R W W B W G B W G W", 1, 14, 0, GetIndexMONO, 0, KvxFormat_TrueSense_GRBG_WGGW_0_14},
    {"TrueSense_GRBG_WGGW_1_14", "W G W R G W R W W B W G B W G W", 1, 14, 0, GetIndexMONO, 1, KvxFormat_TrueSense_GRBG_WGGW_1_14},
    {"TrueSense_GRBG_WGGW_2_14", "W G W R G W R W W B W G B W G W", 1, 14, 0, GetIndexMONO, 2, KvxFormat_TrueSense_GRBG_WGGW_2_14},
    {"TrueSense_GRBG_WGGW_3_14", "W G W R G W R W W B W G B W G W", 1, 14, 0, GetIndexMONO, 3, KvxFormat_TrueSense_GRBG_WGGW_3_14},
    {"TrueSense_RGGB_WRRW_0_14", "W R W G R W G W W G W B G W B W", 1, 14, 0, GetIndexMONO, 0, KvxFormat_TrueSense_RGGB_WRRW_0_14},
    {"TrueSense_RGGB_WRRW_1_14", "W R W G R W G W W G W B G W B W", 1, 14, 0, GetIndexMONO, 1, KvxFormat_TrueSense_RGGB_WRRW_1_14},
    {"TrueSense_RGGB_WRRW_2_14", "W R W G R W G W W G W B G W B W", 1, 14, 0, GetIndexMONO, 2, KvxFormat_TrueSense_RGGB_WRRW_2_14},
    {"TrueSense_RGGB_WRRW_3_14", "W R W G R W G W W G W B G W B W", 1, 14, 0, GetIndexMONO, 3, KvxFormat_TrueSense_RGGB_WRRW_3_14},
    {"RGB8", "R G B", 3, 8, 0, GetIndexRGB, 0, KvxFormat_RGB8},
    {"BGR8", "B G R", 3, 8, 0, GetIndexBGR, 0, KvxFormat_BGR8},
    {"RGBa8", "R G B A", 4, 8, 0, GetIndexRGBA, 0, KvxFormat_RGBa8},
    {"BGRa8", "B G R A", 4, 8, 0, GetIndexBGRA, 0, KvxFormat_BGRa8},
    {"RGB10", "R G B", 3, 10, 0, GetIndexRGB, 0, KvxFormat_RGB10},
    {"BGR10", "B G R", 3, 10, 0, GetIndexBGR, 0, KvxFormat_BGR10},
    {"RGB12", "R G B", 3, 12, 0, GetIndexRGB, 0, KvxFormat_RGB12},
    {"BGR12", "B G R", 3, 12, 0, GetIndexBGR, 0, KvxFormat_BGR12},
    {"RGB14", "R G B", 3, 14, 0, GetIndexRGB, 0, KvxFormat_RGB14},
    {"BGR14", "B G R", 3, 14, 0, GetIndexBGR, 0, KvxFormat_BGR14},
    {"RGB16", "R G B", 3, 16, 0, GetIndexRGB, 0, KvxFormat_RGB16},
    {"BGR16", "B G R", 3, 16, 0, GetIndexBGR, 0, KvxFormat_BGR16},
    {"RGB_8_FLEX_Packed", "R G B", 3, 8, 0, GetIndexRGB, 0, KvxFormat_RGB_8_FLEX_Packed},
    {"RGB_10_FLEX_Packed", "R G B", 3, 10, 0, GetIndexRGB, 0, KvxFormat_RGB_10_FLEX_Packed},
    {"RGB_12_FLEX_Packed", "R G B", 3, 12, 0, GetIndexRGB, 0, KvxFormat_RGB_12_FLEX_Packed},
    {"YUV422_8_UYVY", "U Y V Y", 3, 8, 0, GetIndexYUV, 0, KvxFormat_YUV422_8_UYVY},
    {"YUV422_8", "Y U Y V", 3, 8, 0, GetIndexYUV, 0, KvxFormat_YUV422_8},
    {"YUV422_10", "Y U Y V", 3, 10, 0, GetIndexYUV, 0, KvxFormat_YUV422_10},
    {"YUV422_10_PACKED", "Y U Y V", 3, 10, 0, GetIndexYUV, 0, KvxFormat_YUV422_10_PACKED},
    {"YUV444_8", "Y U V A", 4, 8, 0, GetIndexYUV, 0, KvxFormat_YUV444_8},
    {"YCbCr422_8", "Y Cb Y Cr", 3, 8, 0, GetIndexYUV, 0, KvxFormat_YCbCr422_8},
};
// clang-format on

// The code below checks every row against its name at compile time.

constexpr std::string_view CfaTile(std::string_view name) {
    constexpr std::pair<std::string_view, std::string_view> tiles[] = {
        {"BayerGR", "G R G2 B"},
        {"BayerRG", "R G B G2"},
        {"BayerGB", "G B G2 R"},
        {"BayerBG", "B G R G2"},
        {"TrueSense_BGGR_WBBW", "W B W G B W G W W G W R G W R W"},
        {"TrueSense_GBRG_WGGW", "W G W B G W B W W R W G R W G W"},
        {"TrueSense_GRBG_WGGW", "W G W R G W R W W B W G B W G W"},
        {"TrueSense_RGGB_WRRW", "W R W G R W G W W G W B G W B W"},
    };
    for (const auto& [stem, tile] : tiles)
        if (name.starts_with(stem)) return tile;
    return {};
}

/** The packing digit that the suffix of a name stands for. */
constexpr uint32_t PackingOf(std::string_view name) {
    if (name.ends_with("_FLExPacked") || name.ends_with("_FLEX_Packed") || name.ends_with("_PACKED")) return 3;
    if (name.ends_with("Packed")) return 1;
    return name.ends_with("p") ? 2 : 0;
}

constexpr uint32_t ColourModelOf(std::string_view name) {
    if (name.starts_with("Mono")) return kMono;
    if (name.starts_with("Bayer")) return kBayer;
    if (name.starts_with("TrueSense")) return kTrueSense;
    return name.starts_with("Y") ? kYuv : kRgb;
}

constexpr std::string_view DepthText(uint32_t bits) {
    constexpr std::string_view texts[] = {"8", "10", "12", "14", "16"};
    return texts[bits / 2 - 4];
}

/** True when name, description and code of every row agree. */
constexpr bool EveryRowAgreesWithItsCode() {
    for (uint32_t row = 0; row < std::size(s_colorModelDescription); ++row) {
        const _KvxPixelFormat& f = s_colorModelDescription[row];
        const std::string_view name = f.name;
        const uint32_t bitsPerPixel = (f.pixelType >> 16) & 0xFF;
        if ((f.pixelType & kRowMask) != row + 1) return false;
        if (((f.pixelType >> 8) & 0xF) != f.bitsPerComponent / 2u - 3u) return false;
        if (((f.pixelType >> 12) & 0xF) != PackingOf(name)) return false;
        if ((f.pixelType & kColourModelMask) != ColourModelOf(name)) return false;
        if (name.find(DepthText(f.bitsPerComponent)) == std::string_view::npos) return false;
        if (!CfaTile(name).empty() && CfaTile(name) != f.components) return false;
        if (f.phase != (ColourModelOf(name) == kTrueSense ? uint32_t(name[20] - '0') : 0)) return false;
        if (PackingOf(name) == 0 && ColourModelOf(name) != kYuv &&
            bitsPerPixel != f.componentCount * (f.bitsPerComponent == 8 ? 8u : 16u))
            return false;
    }
    return true;
}
static_assert(std::size(s_colorModelDescription) == KVX_PIXEL_FORMAT_COUNT && EveryRowAgreesWithItsCode());

constexpr std::array<uint8_t, 256> MarkBlueFirstFormats() {
    std::array<uint8_t, 256> marks{};
    for (const _KvxPixelFormat& f : s_colorModelDescription)
        if (std::string_view(f.components).starts_with("B G R") && f.componentCount >= 3)
            marks[f.pixelType & kRowMask] = kBlueFirst;
    return marks;
}

/** Position of a letter in a layout text, where the text's index is the position in the pixel. */
constexpr uint32_t PositionIn(std::string_view layout, int16_t letter) {
    for (uint32_t position = 0; position < layout.size(); ++position)
        if (layout[position] == letter) return position;
    return UINT32_MAX;
}

}  // namespace

constexpr std::array<uint8_t, 256> g_isBGR = MarkBlueFirstFormats();

}  // namespace kvx

const _KvxPixelFormat* KvxPixelFormat_ByIndex(uint32_t index) noexcept {
    return index < KVX_PIXEL_FORMAT_COUNT ? &kvx::s_colorModelDescription[index] : nullptr;
}

const _KvxPixelFormat* KvxPixelFormat_ByCode(uint32_t pixelType) noexcept {
    // Row 0 does not exist: its index wraps around and is out of range.
    const _KvxPixelFormat* row = KvxPixelFormat_ByIndex((pixelType & kvx::kRowMask) - 1);
    return row && row->pixelType == pixelType ? row : nullptr;
}

const _KvxPixelFormat* KvxPixelFormat_ByName(const char* name) noexcept {
    if (!name) return nullptr;
    for (const _KvxPixelFormat& row : kvx::s_colorModelDescription)
        if (std::string_view(name) == row.name) return &row;
    return nullptr;
}

uint32_t GetIndexMONO(int16_t letter) noexcept {
    return kvx::PositionIn("Y", letter);
}
uint32_t GetIndexRGB(int16_t letter) noexcept {
    return kvx::PositionIn("RGB", letter);
}
uint32_t GetIndexBGR(int16_t letter) noexcept {
    return kvx::PositionIn("BGR", letter);
}
uint32_t GetIndexRGBA(int16_t letter) noexcept {
    return kvx::PositionIn("RGBA", letter);
}
uint32_t GetIndexBGRA(int16_t letter) noexcept {
    return kvx::PositionIn("BGRA", letter);
}
uint32_t GetIndexYUV(int16_t letter) noexcept {
    return kvx::PositionIn("YUV", letter);
}
