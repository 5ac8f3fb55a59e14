#pragma once

#include <memory>
#include <string>

#include "KvxDemosaicing/KvxImage.h"
#include "tools/Algorithm.h"
#include "tools/Parameters.h"
#include "tools/Picture.h"
#include "tools/RawFrame.h"

namespace kvx::tool {

/** Converts the frames of one sensor family by the library. */
class Converter {
public:
    virtual ~Converter() = default;

    const AlgorithmFamily& Algorithms() const {
        return m_algorithms;
    }
    Parameters& Settings() {
        return m_parameters;
    }

    /**
     * Converts a frame of the family for a destination that CanConvert() accepts. The picture has the full range of its
     * 8 or 16-bit samples, as files want it. Throws ExitCode::Library; `name` is for messages.
     */
    Picture Convert(const RawFrame& frame, const PixelFormat& destination, const std::string& name);

protected:
    Converter(const AlgorithmFamily& algorithms, KvxComponent* store) : m_algorithms(algorithms), m_parameters(store) {}

    int64_t Algorithm() const {
        return m_parameters.Int(m_algorithms.parameter);
    }

    /** One call of the library; the destination has bytes, or words of the source's depth. Returns its result. */
    virtual uint32_t Call(const _KvxImage& source, _KvxImage& destination) = 0;

    /** The value of white in words that Call() made of frames of this depth. */
    virtual uint32_t White(uint32_t depth) const = 0;

    const Parameters& Settings() const {
        return m_parameters;
    }

private:
    const AlgorithmFamily& m_algorithms;
    Parameters m_parameters;
};

/** The converter for frames of this format, which IsConvertSource() accepts. */
std::unique_ptr<Converter> MakeConverter(const PixelFormat& source);

/** The converter of the family with this name: "bayer" or "truesense". Throws ExitCode::Usage. */
std::unique_ptr<Converter> MakeConverter(const std::string& family);

}  // namespace kvx::tool
