#include "tools/frames/Inference.h"

#include <algorithm>

namespace kvx::tool {

std::vector<FrameFact> Inference::Facts(const cv::Mat& samples) const {
    std::vector<FrameFact> facts = m_facts;
    const auto isKnown = [&facts](const char* name) {
        return std::any_of(facts.begin(), facts.end(), [name](const FrameFact& fact) { return fact.name == name; });
    };
    if (!isKnown("width")) {
        facts.push_back({"width", std::to_string(samples.cols), "header"});
        facts.push_back({"height", std::to_string(samples.rows), "header"});
    }
    return facts;
}

std::string Inference::Inferred() const {
    std::string text = m_inSidecar.empty() ? "" : fmt::format("{} taken from {}", m_inSidecar, m_sidecar.path);
    if (!m_inName.empty()) {
        text += fmt::format("{}{} taken from its name", text.empty() ? "" : "; ", m_inName);
    }
    return text;
}

}  // namespace kvx::tool
