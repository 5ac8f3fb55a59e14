/**
 * @file
 * The frame layer in C: results, sentences and rules of all its functions (KvxFrameC.h is all of them).
 *
 * - A function returns 0 or a result code as in KvxResult.h: of this layer (component type 7, 0x80070007 is an invalid
 *   argument) or of a component. For every failure there is also a sentence that says how to fix it.
 * - Null for a required argument gives 0x80070008, a failed allocation 0x80070009. A function that fails writes nothing
 *   and changes no setting. None throws, and none prints.
 * - A text is returned in `buffer`, which has `*size` bytes. If it does not fit, the result is 0x80070006, `*size`
 *   becomes the size needed (final NUL included) and the buffer is not changed. To ask for the size, pass `*size` 0;
 *   `buffer` may then be null. Texts are UTF-8.
 * - Records never grow: new settings get functions of their own. Zero bytes are a valid start of every record.
 * - Settings that a converter keeps are set by functions; the memory of frames and pictures stays the caller's.
 */
#ifndef KVXFRAME_ERRORC_H
#define KVXFRAME_ERRORC_H

#include "KvxDemosaicing/KvxResult.h"

KVX_EXTERN_C_BEGIN

/**
 * The sentence of the last failure in this thread of a function without a converter, of KvxFrameConverter_Create(), or
 * of a call with a null converter.
 *
 * @return never null; "" before the first failure. Valid until the next failure in this thread; at most 1023 bytes.
 */
KVX_API const char* KvxFrame_LastError(void) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
