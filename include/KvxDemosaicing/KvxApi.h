/**
 * @file
 * What every public header needs: fixed-width types and the marks of the exported interface.
 *
 * Exported functions have C linkage, throw nothing and write nothing to a console.
 */
#ifndef KVXDEMOSAICING_KVXAPI_H
#define KVXDEMOSAICING_KVXAPI_H

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

/** Marks what the shared library exports. */
#define KVX_API __attribute__((visibility("default")))

/**
 * @def KVX_NOEXCEPT
 * `noexcept` in C++, nothing in C.
 * @def KVX_CONSTEXPR
 * `constexpr` in C++, nothing in C.
 * @def KVX_EXTERN_C_BEGIN
 * Starts declarations with C linkage.
 * @def KVX_EXTERN_C_END
 * Ends them.
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
