/**
 * Bilinear conversion of 16-bit words in one pass, for every form of output.
 *
 * The image-processing library's own is scalar for words, and gives words only: a 12-bit camera shown on a screen, the
 * most common job there is, would pay for both. The samples are the library's to the bit.
 */
#pragma once

#include "KvxBayer/BayerConversion.h"

namespace kvx {

/** True for a bilinear code, a 16-bit source, and rows of words that start at even addresses. */
bool TakesBilinearWords(const _KvxImage& src, const _KvxImage& dst, int code, const BayerOutput& output);

/** As ConvertBayer(), behind its checks, for what TakesBilinearWords() accepts. */
void ConvertBilinearWords(const _KvxImage& src, const _KvxImage& dst, int code, const BayerOutput& output);

}  // namespace kvx
