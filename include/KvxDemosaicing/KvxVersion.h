/**
 * @file
 * The version of the headers that a program is compiled with, and of the library that it runs with.
 *
 * A program runs with the version that it was compiled with and with all later ones of the same major version.
 */
#ifndef KVXDEMOSAICING_KVXVERSION_H
#define KVXDEMOSAICING_KVXVERSION_H

#include "KvxDemosaicing/KvxApi.h"

/** @{ Version of these headers. */
#define KVX_VERSION_MAJOR 3
#define KVX_VERSION_MINOR 0
#define KVX_VERSION_PATCH 0
/** @} */

/** The same as one number, which grows with the version: 0x030100 for 3.1.0. */
#define KVX_VERSION_NUMBER (KVX_VERSION_MAJOR << 16 | KVX_VERSION_MINOR << 8 | KVX_VERSION_PATCH)

KVX_EXTERN_C_BEGIN

/** KVX_VERSION_NUMBER of the library that the program runs with. Any thread. */
KVX_API uint32_t Kvx_Version(void) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
