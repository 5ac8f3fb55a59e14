#pragma once

#include <fmt/format.h>

#include <optional>
#include <string>
#include <vector>

#include "tools/files/FrameName.h"
#include "tools/frames/FrameReader.h"

namespace kvx::tool {

/** Takes what the user left open from the sidecar, then from the file's name, and records where it came from. */
class Inference {
public:
    Inference(const std::string& path, const FrameRequest& request)
        : m_request(request), m_sidecar(request.useSidecar ? ReadSidecar(path) : Sidecar()) {
        if (path != "-") {
            m_fromName = ParseFrameName(path);
        }
    }

    std::optional<frame::Format> Format() {
        const auto name = [](const frame::Format& format) { return frame::Name(format); };
        return First("format", m_request.format, m_sidecar.format, m_fromName.format, name);
    }

    std::optional<uint64_t> Width() {
        return Number("width", m_request.width, m_sidecar.width, NameSize(&FrameSize::width));
    }

    std::optional<uint64_t> Height() {
        return Number("height", m_request.height, m_sidecar.height, NameSize(&FrameSize::height));
    }

    std::optional<uint64_t> Stride() {
        return Number("stride", m_request.stride, m_sidecar.stride, {});
    }

    uint64_t SkipBytes() {
        return Number("offset", m_request.skipBytes, m_sidecar.offset, {}).value_or(0);
    }

    const Sidecar& FromSidecar() const {
        return m_sidecar;
    }

    /** All facts asked for so far, and the size if only the file's header contains it. */
    std::vector<FrameFact> Facts(const cv::Mat& samples) const;

    /** A message about what sidecar and name gave; often empty. */
    std::string Inferred() const;

private:
    std::optional<uint64_t> NameSize(uint64_t FrameSize::*member) const {
        return m_fromName.size ? std::optional(*m_fromName.size.*member) : std::nullopt;
    }

    std::optional<uint64_t> Number(const char* word, std::optional<uint64_t> given, std::optional<uint64_t> fromSidecar,
                                   std::optional<uint64_t> fromName) {
        return First(word, given, fromSidecar, fromName, [](uint64_t number) { return number; });
    }

    template <typename Value, typename Describe>
    std::optional<Value> First(const char* word, const std::optional<Value>& given,
                               const std::optional<Value>& fromSidecar, const std::optional<Value>& fromName,
                               const Describe& describe) {
        const std::optional<Value>& value = given ? given : fromSidecar ? fromSidecar : fromName;
        if (value) {
            m_facts.push_back({word, fmt::format("{}", describe(*value)),
                               given         ? "options"
                               : fromSidecar ? "sidecar"
                                             : "name"});
        }
        if (value && !given) {
            std::string& texts = fromSidecar ? m_inSidecar : m_inName;
            texts += fmt::format("{}{} {}", texts.empty() ? "" : ", ", word, describe(*value));
        }
        return value;
    }

    const FrameRequest& m_request;
    Sidecar m_sidecar;
    FrameName m_fromName;
    std::vector<FrameFact> m_facts;
    std::string m_inSidecar;
    std::string m_inName;
};

}  // namespace kvx::tool
