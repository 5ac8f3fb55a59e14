/**
 * @file
 * All of the frame layer's C interface, C11: formats, views, conversion. ErrorC.h has the rules of all functions.
 */
#ifndef KVXFRAME_KVXFRAMEC_H
#define KVXFRAME_KVXFRAMEC_H

#include "KvxFrame/ConverterC.h"
#include "KvxFrame/ErrorC.h"
#include "KvxFrame/FormatC.h"
#include "KvxFrame/ViewC.h"

#endif
