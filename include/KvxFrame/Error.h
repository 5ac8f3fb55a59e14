/**
 * @file
 * The one exception of the frame layer.
 *
 * Every function of KvxFrame that refuses something throws kvx::frame::Error before it writes anything; failed
 * allocations arrive as std::bad_alloc. Nothing is written to a console.
 */
#ifndef KVXFRAME_ERROR_H
#define KVXFRAME_ERROR_H

#include <cstdint>
#include <stdexcept>
#include <string>

#include "KvxDemosaicing/KvxResult.h"

namespace kvx::frame {

/** The component type in result codes of the frame layer itself: 0x80070007 is an argument that it refused. */
constexpr uint32_t kComponentType = 7;

/** What was refused: what() is a sentence for users that names the fix, Result() the code for programs. */
class KVX_API Error : public std::runtime_error {
public:
    /** @param result a failure @param sentence what() */
    Error(uint32_t result, const std::string& sentence) : std::runtime_error(sentence), m_result(result) {}
    /** Defined in the library, where the class's type information stays. */
    ~Error() override;

    /** A failure as in KvxResult.h: one of this layer's (component type 7), or what a component returned. */
    uint32_t Result() const noexcept {
        return m_result;
    }

private:
    uint32_t m_result;
};

}  // namespace kvx::frame

#endif
