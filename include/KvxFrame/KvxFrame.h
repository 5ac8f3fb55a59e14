/**
 * @file
 * All of the frame layer: formats, packings, views, geometry, finish, camera profiles, conversion,
 * mosaicing.
 */
#ifndef KVXFRAME_KVXFRAME_H
#define KVXFRAME_KVXFRAME_H

#include "KvxFrame/CameraProfile.h"
#include "KvxFrame/Converter.h"
#include "KvxFrame/Error.h"
#include "KvxFrame/Finish.h"
#include "KvxFrame/Format.h"
#include "KvxFrame/Geometry.h"
#include "KvxFrame/Mosaic.h"
#include "KvxFrame/Packing.h"
#include "KvxFrame/Relayout.h"
#include "KvxFrame/SampleDepth.h"
#include "KvxFrame/SensorNoise.h"
#include "KvxFrame/View.h"

#endif
