/**
 * @file
 * What every public header needs: fixed-width types and the macros of the exported interface.
 *
 * Exported functions have C linkage, throw nothing and print nothing.
 */
#ifndef KVXDEMOSAICING_KVXAPI_H
#define KVXDEMOSAICING_KVXAPI_H

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

/** Exported by the shared library. */
#define KVX_API __attribute__((visibility("default")))

/**
 * @def KVX_NOEXCEPT
 * `noexcept` in C++, nothing in C.
 * @def KVX_CONSTEXPR
 * `constexpr` in C++, nothing in C.
 * @def KVX_EXTERN_C_BEGIN
 * Opens a block of declarations with C linkage.
 * @def KVX_EXTERN_C_END
 * Closes it.
 */
#ifdef __cplusplus
#define KVX_NOEXCEPT noexcept
#define KVX_CONSTEXPR constexpr
#define KVX_EXTERN_C_BEGIN extern "C" {
#define KVX_EXTERN_C_END }
#else
#include <stdbool.h>
#define KVX_NOEXCEPT
#define KVX_CONSTEXPR
#define KVX_EXTERN_C_BEGIN
#define KVX_EXTERN_C_END
#endif

#endif
