/** The fast noise-reducing demosaicers on whole planes, made of the pipeline's public stages: slow and plain. */
#pragma once

#include "KvxDemosaicing/KvxTrueSense.h"
#include "demosaicers/interpolation/SlowTrueSense.h"

namespace kvx::test {

/** The linear planes of the light variant, before matrix and tone. */
SlowPicture SlowSimple(const SlowSource& source, const tagTrueSenseParam& params);

/** The display values of the whole pipeline: of 12 bits, or of 8. */
SlowPicture SlowKodakLike(const SlowSource& source, const tagTrueSenseParam& params, bool isDeep);

}  // namespace kvx::test
