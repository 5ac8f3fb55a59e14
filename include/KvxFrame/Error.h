/**
 * @file
 * The exception of the frame layer.
 *
 * Functions of KvxFrame check their arguments before they write anything and throw kvx::frame::Error for invalid ones.
 * Failed allocations throw std::bad_alloc. Nothing is written to a console.
 */
#ifndef KVXFRAME_ERROR_H
#define KVXFRAME_ERROR_H

#include <cstdint>
#include <stdexcept>
#include <string>

#include "KvxDemosaicing/KvxResult.h"

namespace kvx::frame {

/** The component type in the frame layer's own result codes: 0x80070007 is an invalid argument. */
constexpr uint32_t kComponentType = 7;

/** An error: what() is a sentence for users that says how to fix it, Result() is the code for programs. */
class KVX_API Error : public std::runtime_error {
public:
    /** @param result a result code that stands for a failure @param sentence the text of what() */
    Error(uint32_t result, const std::string& sentence) : std::runtime_error(sentence), m_result(result) {}
    /** Defined in the library, so that all programs share one type. */
    ~Error() override;

    /** A result code as in KvxResult.h: of this layer (component type 7) or of a component. */
    uint32_t Result() const noexcept {
        return m_result;
    }

private:
    uint32_t m_result;
};

}  // namespace kvx::frame

#endif
