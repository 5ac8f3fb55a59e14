#include "gstreamer/Properties.h"

#include <gst/gst.h>

#include <array>

namespace kvx::gst {
namespace {

enum Number : guint {
    kAlgorithm = 1,
    kThreads,
    kWhiteBalance,
    kBlackLevel,
    kWhiteLevel,
    kMatrix,
    kTone,
    kParameters,
    kPacking,
    kStride,
    kAnalogGain,
    kLook,
    kExposure,
    kCamera,
    kDefects,
    kWhiteBalanceFrom
};

constexpr auto kFlags =
    static_cast<GParamFlags>(G_PARAM_READWRITE | G_PARAM_STATIC_STRINGS | GST_PARAM_MUTABLE_PLAYING);
constexpr gdouble kMaxAnalogGain = 1000;

// In enumerations 0 means "not set"; other values are the frame layer's plus one.
constexpr std::array kTones = {
    GEnumValue{0, "The component's; linear if another property sets the processing of values", "default"},
    GEnumValue{1 + static_cast<int>(frame::ToneCurve::Linear), "Linear", "linear"},
    GEnumValue{1 + static_cast<int>(frame::ToneCurve::Srgb), "sRGB (IEC 61966-2-1)", "srgb"}, GEnumValue{}};
constexpr std::array kLooks = {
    GEnumValue{0, "As the other properties say", "none"},
    GEnumValue{1, "White balance, exposure and sRGB curve for display, unless other properties say otherwise",
               "natural"},
    GEnumValue{}};
constexpr std::array kDefectChoices = {
    GEnumValue{static_cast<int>(frame::Defects::Listed), "Those listed in the profile of the camera", "listed"},
    GEnumValue{static_cast<int>(frame::Defects::Auto), "Outliers, too", "auto"}, GEnumValue{}};
constexpr std::array kPackings = {
    GEnumValue{0, "As in the name of the format", "none"},
    GEnumValue{1 + static_cast<int>(frame::Layout::MsbAligned), "16-bit words, left-aligned", "msb"},
    GEnumValue{1 + static_cast<int>(frame::Layout::Pfnc), "PFNC's 10p, 12p, 14p", "pfnc"},
    GEnumValue{1 + static_cast<int>(frame::Layout::GigE), "GigE Vision's 10Packed, 12Packed", "gige"},
    GEnumValue{1 + static_cast<int>(frame::Layout::Mipi), "MIPI CSI-2's RAW10, RAW12, RAW14", "mipi"},
    GEnumValue{}};

template <class Choice>
std::optional<Choice> ChoiceOf(const GValue* value) {
    const int number = g_value_get_enum(value);
    return number == 0 ? std::nullopt : std::optional(static_cast<Choice>(number - 1));
}

template <class Choice>
int NumberOf(const std::optional<Choice>& choice) {
    return choice ? 1 + static_cast<int>(*choice) : 0;
}

std::string TextOf(const GValue* value) {
    const char* text = g_value_get_string(value);
    return text ? text : "";
}

void SetText(GValue* value, const std::string& text) {
    g_value_set_string(value, text.empty() ? nullptr : text.c_str());
}

/** The value of a structure's field as text for a parameter of the component. */
std::string ParameterText(const GValue* value) {
    if (G_VALUE_HOLDS_STRING(value)) {
        return TextOf(value);
    }
    if (G_VALUE_HOLDS_BOOLEAN(value)) {
        return g_value_get_boolean(value) ? "1" : "0";
    }
    gchar* text = gst_value_serialize(value);
    std::string result = text ? text : "";
    g_free(text);
    return result;
}

std::map<std::string, std::string> ParametersOf(const GValue* value) {
    std::map<std::string, std::string> parameters;
    if (const GstStructure* structure = gst_value_get_structure(value)) {
        for (int index = 0; index < gst_structure_n_fields(structure); ++index) {
            const char* name = gst_structure_nth_field_name(structure, static_cast<guint>(index));
            parameters[name] = ParameterText(gst_structure_get_value(structure, name));
        }
    }
    return parameters;
}

GstStructure* StructureOf(const std::map<std::string, std::string>& parameters) {
    GstStructure* structure = gst_structure_new_empty("parameters");
    for (const auto& [name, text] : parameters) {
        gst_structure_set(structure, name.c_str(), G_TYPE_STRING, text.c_str(), nullptr);
    }
    return structure;
}

std::string NamesOf(frame::Family family) {
    std::string names;
    for (const frame::Algorithm& algorithm : frame::AlgorithmsOf(family)) {
        names += (names.empty() ? "" : ", ") + std::string(algorithm.name);
    }
    return names;
}

}  // namespace

void InstallProperties(GObjectClass* gobjectClass) {
    static const GType toneType = g_enum_register_static("GstKvxDemosaicTone", kTones.data());
    static const GType lookType = g_enum_register_static("GstKvxDemosaicLook", kLooks.data());
    static const GType packingType = g_enum_register_static("GstKvxDemosaicPacking", kPackings.data());
    static const GType defectsType = g_enum_register_static("GstKvxDemosaicDefects", kDefectChoices.data());
    const auto install = [gobjectClass](Number number, GParamSpec* property) {
        g_object_class_install_property(gobjectClass, number, property);
    };
    const auto installText = [&install](Number number, const char* name, const char* nick, const char* help) {
        install(number, g_param_spec_string(name, nick, help, nullptr, kFlags));
    };
    static const std::string algorithms = "For Bayer: " + NamesOf(frame::Family::Bayer) +
                                          "; for TrueSense: " + NamesOf(frame::Family::TrueSense) +
                                          " (null = the first of these)";
    installText(kAlgorithm, "algorithm", "Algorithm", algorithms.c_str());
    install(kThreads, g_param_spec_uint("n-threads", "Threads", "Threads of a conversion (0 = all processors)", 0,
                                        frame::kMaxThreads, 0, kFlags));
    installText(kWhiteBalance, "white-balance", "White balance",
                "auto, grey-world, white-patch, or gains of red, green and blue such as 1.9,1,1.4");
    installText(kWhiteBalanceFrom, "white-balance-from", "Grey place",
                "Part of each frame that becomes grey instead of white-balance: X,Y,W,H in pixels");
    installText(
        kBlackLevel, "black-level", "Black level",
        "Sample value of black, or one per filter: red, green in red rows, green in blue rows, blue (TrueSense: "
        "red, green, blue, clear)");
    installText(kWhiteLevel, "white-level", "White level",
                "Sample value at which the sensor clips, likewise (null or 0 = the largest)");
    installText(kMatrix, "matrix", "Colour matrix", "Nine numbers with commas between, row by row");
    install(kTone, g_param_spec_enum("tone", "Tone curve", "Tone curve", toneType, 0, kFlags));
    install(kParameters, g_param_spec_boxed("parameters", "Parameters",
                                            "The component's own parameters by name, for example \"p,panSigma0=2\"",
                                            GST_TYPE_STRUCTURE, kFlags));
    install(kPacking,
            g_param_spec_enum("packing", "Packing", "How samples above 8 bits are packed", packingType, 0, kFlags));
    install(kStride, g_param_spec_int("stride", "Stride",
                                      "Bytes from row to row of frames without GstVideoMeta (0 = automatic: rows "
                                      "without padding or padded to 4 bytes)",
                                      0, G_MAXINT, 0, kFlags));
    install(kAnalogGain,
            g_param_spec_double("analog-gain", "Analog gain",
                                "The sensor's gain, whose noise \"fine\" and the noise-reducing algorithms remove (0 = "
                                "not given)",
                                0, kMaxAnalogGain, 0, kFlags));
    install(kLook, g_param_spec_enum("look", "Look", "Look of the pictures", lookType, 0, kFlags));
    installText(kExposure, "exposure", "Exposure", "Brightening in EV (1 doubles the light), or auto");
    installText(kCamera, "camera", "Camera", "Path of the camera's profile, which corrects its frames");
    install(kDefects,
            g_param_spec_enum("defects", "Defects", "Which samples are replaced as defective", defectsType, 0, kFlags));
}

bool SetProperty(Settings& settings, guint number, const GValue* value) {
    switch (number) {
        case kAlgorithm:
            settings.algorithm = TextOf(value);
            return true;
        case kThreads:
            settings.threads = g_value_get_uint(value);
            return true;
        case kWhiteBalance:
            settings.whiteBalance = TextOf(value);
            return true;
        case kWhiteBalanceFrom:
            settings.whiteBalanceFrom = TextOf(value);
            return true;
        case kBlackLevel:
            settings.blackLevel = TextOf(value);
            return true;
        case kWhiteLevel:
            settings.whiteLevel = TextOf(value);
            return true;
        case kMatrix:
            settings.matrix = TextOf(value);
            return true;
        case kTone:
            settings.tone = ChoiceOf<frame::ToneCurve>(value);
            return true;
        case kParameters:
            settings.parameters = ParametersOf(value);
            return true;
        case kPacking:
            settings.packing = ChoiceOf<frame::Layout>(value);
            return true;
        case kStride:
            settings.stride = g_value_get_int(value);
            return true;
        case kAnalogGain:
            settings.analogGain = g_value_get_double(value);
            return true;
        case kLook:
            settings.isNatural = g_value_get_enum(value) != 0;
            return true;
        case kExposure:
            settings.exposure = TextOf(value);
            return true;
        case kCamera:
            settings.camera = TextOf(value);
            return true;
        case kDefects:
            settings.defects = static_cast<frame::Defects>(g_value_get_enum(value));
            return true;
        default:
            return false;
    }
}

bool GetProperty(const Settings& settings, guint number, GValue* value) {
    switch (number) {
        case kAlgorithm:
            SetText(value, settings.algorithm);
            return true;
        case kThreads:
            g_value_set_uint(value, settings.threads);
            return true;
        case kWhiteBalance:
            SetText(value, settings.whiteBalance);
            return true;
        case kWhiteBalanceFrom:
            SetText(value, settings.whiteBalanceFrom);
            return true;
        case kBlackLevel:
            SetText(value, settings.blackLevel);
            return true;
        case kWhiteLevel:
            SetText(value, settings.whiteLevel);
            return true;
        case kMatrix:
            SetText(value, settings.matrix);
            return true;
        case kTone:
            g_value_set_enum(value, NumberOf(settings.tone));
            return true;
        case kParameters:
            g_value_take_boxed(value, StructureOf(settings.parameters));
            return true;
        case kPacking:
            g_value_set_enum(value, NumberOf(settings.packing));
            return true;
        case kStride:
            g_value_set_int(value, settings.stride);
            return true;
        case kAnalogGain:
            g_value_set_double(value, settings.analogGain);
            return true;
        case kLook:
            g_value_set_enum(value, settings.isNatural ? 1 : 0);
            return true;
        case kExposure:
            SetText(value, settings.exposure);
            return true;
        case kCamera:
            SetText(value, settings.camera);
            return true;
        case kDefects:
            g_value_set_enum(value, static_cast<int>(settings.defects));
            return true;
        default:
            return false;
    }
}

}  // namespace kvx::gst
