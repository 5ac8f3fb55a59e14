/**
 * @file
 * The whole interface of the library.
 *
 * Threads: conversions spread their work over OpenMP threads, never more than there is work for. Those threads stay
 * with the process and wait for the next frame.
 *
 * fork(): a child process has only the thread that forked. After a conversion in the parent, a conversion in the child
 * waits for ever for threads that it does not have. Fork before the first conversion, or call exec() in the child.
 *
 * dlclose(): the library stays in memory until the process ends, as its waiting threads need it.
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
#include "KvxDemosaicing/KvxRows.h"
#include "KvxDemosaicing/KvxTrueSense.h"
#include "KvxDemosaicing/KvxTrueSenseFlat.h"
#include "KvxDemosaicing/KvxVersion.h"

#endif
