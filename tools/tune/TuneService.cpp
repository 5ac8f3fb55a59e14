#include "tools/tune/TuneService.h"

#include <filesystem>
#include <nlohmann/json.hpp>

#include "tools/convert/ParameterJson.h"
#include "tools/tune/TuneReplies.h"

namespace kvx::tool {
namespace {

using Json = nlohmann::ordered_json;

constexpr size_t kKeptConversions = 4;  // as many as a page compares

Json GainsJson(const frame::Gains& gains) {
    return {gains.red, gains.green, gains.blue};
}

/** What a page should start with: the natural look for linear light. What a sidecar has applies in it, too. */
Json StartSettings(const TunedFrame& frame) {
    return frame::LooksLinear(ViewOf(frame.input.frame), frame::Finish()) ? Json{{"look", "natural"}} : Json::object();
}

}  // namespace

TuneService::TuneService(TuneInput input)
    : m_input(std::move(input)), m_frames(m_input.frames, m_input.request, m_input.camera) {
    const auto first = m_frames.Get(0);
    if (!m_input.reference.empty() && m_input.reference.size() != first->Bounds(0).size()) {
        Fail(ExitCode::Frame, "--reference: must be a colour picture of the frame's {}x{} pixels",
             first->Bounds(0).width, first->Bounds(0).height);
    }
}

const std::map<std::string, TuneService::Handler>& TuneService::Handlers() {
    static const std::map<std::string, Handler> handlers = {
        {"frames", &TuneService::Frames}, {"controls", &TuneService::Controls}, {"plan", &TuneService::Plan},
        {"part", &TuneService::Part},     {"samples", &TuneService::Samples},   {"histogram", &TuneService::Histogram},
        {"chart", &TuneService::Chart},   {"psnr", &TuneService::Psnr},         {"export", &TuneService::Export},
        {"save", &TuneService::Save},
    };
    return handlers;
}

TuneReply TuneService::Reply(const TuneRequest& request) {
    const auto handler = Handlers().find(request.path);
    if (handler == Handlers().end()) return Refusal(404, "there is no such request");
    if (request.writes != (request.path == "save")) return Refusal(405, "POST is for save, GET for all others");
    try {
        return (this->*handler->second)(request);
    } catch (...) {
        const ToolError failure = CurrentFailure();
        return Refusal(failure.Code() == ExitCode::Usage        ? 400
                       : failure.Code() == ExitCode::Input      ? 410
                       : failure.Code() == ExitCode::Unexpected ? 500
                                                                : 422,
                       failure.what());
    }
}

std::shared_ptr<TunedConversion> TuneService::ConversionFor(const TuneRequest& request, const char* settings) {
    const std::string json = TextIn(request, settings);
    const auto index = static_cast<size_t>(NumberIn(request, "frame", "0"));
    const std::string key = std::to_string(index) + json;
    const auto isWanted = [&key](const auto& kept) { return kept.first == key; };
    if (const auto kept = std::ranges::find_if(m_conversions, isWanted); kept != m_conversions.end()) {
        return kept->second;
    }
    auto frame = m_frames.Get(index);
    // Conversions of another frame would keep it in memory.
    std::erase_if(m_conversions, [&](const auto& kept) { return &kept.second->Frame() != frame.get(); });
    auto conversion =
        std::make_shared<TunedConversion>(std::move(frame), ReadSettings(json, m_frames.Request(), m_frames.Camera()));
    m_conversions.emplace_front(key, conversion);
    if (m_conversions.size() > kKeptConversions) m_conversions.pop_back();
    return conversion;
}

TuneReply TuneService::Frames(const TuneRequest& /*request*/) {
    Json names = Json::array();
    for (const std::string& path : m_frames.Paths()) {
        names.push_back(std::filesystem::path(path).filename().string());
    }
    return JsonReply({{"frames", names}, {"reference", !m_input.reference.empty()}});
}

TuneReply TuneService::Controls(const TuneRequest& request) {
    const std::lock_guard lock(m_mutex);
    const auto frame = m_frames.Get(static_cast<size_t>(NumberIn(request, "frame", "0")));
    const frame::Format& format = frame->input.frame.format;
    Json levels = Json::array();
    for (const RawFrame& level : frame->levels) {
        levels.push_back({level.samples.cols, level.samples.rows});
    }
    return JsonReply({{"name", frame->name},
                      {"format", frame::Name(frame->input.fileFormat)},
                      {"levels", levels},
                      {"tile", frame::TileSide(format)},
                      {"white", frame::White(format)},
                      {"warning", frame->input.sidecar.warning},
                      {"start", StartSettings(*frame)},
                      {"controls", ControlsJson(format, m_input.camera != nullptr)},
                      {"parameters", ParameterJson(frame::Converter(format.family))}});
}

TuneReply TuneService::Plan(const TuneRequest& request) {
    const std::lock_guard lock(m_mutex);
    const auto conversion = ConversionFor(request);
    Json facts = Json::array();
    for (const FrameFact& fact : conversion->Plan().facts) {
        facts.push_back({{"name", fact.name}, {"value", fact.value}, {"origin", fact.origin}});
    }
    const frame::Finish fixed = conversion->Fixed().value_or(frame::Finish());
    return JsonReply({{"facts", facts},
                      {"finished", conversion->Fixed().has_value()},
                      {"gains", GainsJson(fixed.gains)},
                      {"exposure", fixed.exposure},
                      {"matrix", fixed.matrix},
                      {"black", fixed.blackLevel.ofFilters},
                      {"white", fixed.whiteLevel.ofFilters},
                      {"algorithm", conversion->Converter().AlgorithmName()},
                      {"measuresNoise", conversion->MeasuresNoise()}});
}

}  // namespace kvx::tool
