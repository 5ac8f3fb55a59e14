/**
 * @file
 * All of the library's interface.
 */
#ifndef KVXDEMOSAICING_KVXDEMOSAICING_H
#define KVXDEMOSAICING_KVXDEMOSAICING_H

#include "KvxDemosaicing/KvxBayer.h"
#include "KvxDemosaicing/KvxBayerFlat.h"
#include "KvxDemosaicing/KvxComponent.h"
#include "KvxDemosaicing/KvxImage.h"
#include "KvxDemosaicing/KvxPipeline.h"
#include "KvxDemosaicing/KvxPixelFormat.h"
#include "KvxDemosaicing/KvxResult.h"
#include "KvxDemosaicing/KvxTrueSense.h"
#include "KvxDemosaicing/KvxTrueSenseFlat.h"

#endif
