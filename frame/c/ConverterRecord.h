/** The object behind a converter of the C interface. */
#pragma once

#include "KvxFrame/Converter.h"
#include "KvxFrame/ConverterC.h"
#include "frame/c/Sentence.h"

struct KvxFrameConverter {
    explicit KvxFrameConverter(kvx::frame::Family family) : converter(family) {}

    kvx::frame::Converter converter;
    std::optional<kvx::frame::Finish> finish;
    kvx::frame::GivenParts given;  ///< what functions have set of it
    std::shared_ptr<const kvx::frame::CameraProfile> camera;
    kvx::frame::c::Sentence error;
};

namespace kvx::frame::c {

/** Runs the body of a function of a converter, with the converter. */
template <class Body>
uint32_t Guarded(KvxFrameConverter* converter, const Body& body) noexcept {
    return Guarded(converter ? converter->error : ThreadSentence(), [&] { body(Required(converter, "converter")); });
}

/** A number of the C interface as a choice. @throws Error 0x80070004 for a number above `last` */
template <class Choice>
Choice ChoiceOf(uint32_t number, Choice last, const char* what) {
    if (number > static_cast<uint32_t>(last))
        Fail(KvxResult_OutOfRange, "{} {}: give 0 to {}", what, number, static_cast<uint32_t>(last));
    return static_cast<Choice>(number);
}

}  // namespace kvx::frame::c
