#include "frame/convert/ConverterImpl.h"

#include <omp.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "frame/base/Fail.h"
#include "frame/base/Team.h"
#include "frame/camera/CameraFinish.h"
#include "frame/convert/RawRows.h"
#include "frame/finish/Balance.h"
#include "frame/finish/FinishLimits.h"
#include "frame/view/Checks.h"

namespace kvx::frame {
namespace {

constexpr uint32_t kWhite = 65535;

/** Sets OpenMP's thread count in a scope; 0 keeps it. */
class ThreadCountScope {
public:
    explicit ThreadCountScope(int count) : m_previous(omp_get_max_threads()) {
        if (count > 0) omp_set_num_threads(count);
    }
    ThreadCountScope(const ThreadCountScope&) = delete;
    ThreadCountScope& operator=(const ThreadCountScope&) = delete;
    ~ThreadCountScope() {
        omp_set_num_threads(m_previous);
    }

private:
    int m_previous;
};

PixelMatrix MatrixFor(const Finish& finish, uint32_t white, double exposure) {
    PixelMatrix matrix;
    const double scale = double{kWhite} / white * std::exp2(exposure);
    for (size_t i = 0; i < matrix.size(); ++i) matrix[i] = static_cast<float>(finish.matrix[i] * scale);
    return matrix;
}

/** The picture of a mono frame: its samples for all three colours. */
void CopyGrey(const RawRows& rows, uint32_t width, uint32_t height, const PictureSink& sink) {
    constexpr uint32_t length = 1024;
    ForRows(height, TeamForSamples(uint64_t{width} * height), [&](uint32_t row, int) {
        std::array<uint16_t, length + KVX_ROW_PADDING / sizeof(uint16_t)> samples;
        for (uint32_t column = 0; column < width; column += length) {
            const uint32_t count = std::min(length, width - column);
            rows.Read(row, column, count, samples.data());
            sink.Write(row, column, count, {samples.data(), samples.data(), samples.data()});
        }
    });
}

}  // namespace

void Validate(const Finish& finish) {
    for (const double gain : {finish.gains.red, finish.gains.green, finish.gains.blue, finish.gains.pan})
        if (!(gain > 0 && gain <= kLargestGain))
            Fail(KvxResult_OutOfRange, "a gain of {}: give more than 0, at most {}", gain, kLargestGain);
    for (const double coefficient : finish.matrix)
        if (!(std::abs(coefficient) <= kLargestCoefficient))
            Fail(KvxResult_OutOfRange, "a matrix coefficient of {}: give -{} to {}", coefficient, kLargestCoefficient,
                 kLargestCoefficient);
    if (!(std::abs(finish.exposure) <= kLargestExposure))
        Fail(KvxResult_OutOfRange, "an exposure of {}: give -{} to {} EV", finish.exposure, kLargestExposure,
             kLargestExposure);
    for (const Levels& levels : {finish.blackLevel, finish.whiteLevel})
        for (const double level : levels.ofFilters)
            if (!(level >= 0 && level <= kLargestLevel))
                Fail(KvxResult_OutOfRange, "a black or white level of {}: give 0 to {}", level, kLargestLevel);
    if (finish.tone == ToneCurve::Table && (finish.table.size() < 2 || finish.table.size() > 65536))
        Fail(KvxResult_OutOfRange, "a tone table of {} entries: give 2 to 65536", finish.table.size());
}

void Validate(const SensorNoise& noise) {
    for (const double value : {noise.pan.slope, noise.pan.intercept, noise.colour.slope, noise.colour.intercept})
        if (!std::isfinite(value)) Fail(KvxResult_OutOfRange, "a noise model with {}: give finite values", value);
}

ConverterImpl::ConverterImpl(Family frameFamily) : family(frameFamily) {
    if (family == Family::Bayer) component = MakeBayerComponent();
    if (family == Family::TrueSense) component = MakeTrueSenseComponent();
    if (family == Family::Colour)
        Fail(KvxResult_InvalidArgument, "colour pictures are not converted: there is no mosaic");
}

void ConverterImpl::Release() noexcept {
    m_meter = {};
    tone = {};
    correction.Release();
    if (component) component->Release();
    if (m_learned) m_learned->Release();
}

void ConverterImpl::SetAlgorithm(std::string_view nameOrNumber) {
    auto learned = MakeLearnedInterpolator(nameOrNumber, family);
    if (!learned) component->SetAlgorithm(nameOrNumber);
    m_learned = std::move(learned);
    tone.Forget();
}

std::string ConverterImpl::AlgorithmName() const {
    return m_learned ? m_learned->Name() : component ? component->AlgorithmName() : "";
}

void ConverterImpl::Check(const SourceView& source, const DestinationView& destination) const {
    Validate(source);
    Validate(destination);
    if (source.format.family != family)
        Fail(KvxResult_InvalidArgument, "this converter is for another family than {}: make one for it",
             Name(source.format));
    CheckSameSize(source, destination);
    CheckApart(source, destination);
    correction.Check(source);
}

/** The component's mirror parameters have the effect of the view's flags. */
SourceView ConverterImpl::WithMirrorParameters(SourceView source) const {
    if (family == Family::TrueSense) {
        source.horMirrored = source.horMirrored || component->IntParameter("horMirrored") != 0;
        source.verMirrored = source.verMirrored || component->IntParameter("verMirrored") != 0;
    }
    return source;
}

void ConverterImpl::SetFinish(std::optional<Finish> finish, GivenParts given) {
    m_givenFinish = std::move(finish);
    m_givenParts = given;
    m_finish = m_camera ? ColoursWith(*m_camera, m_givenFinish, given) : m_givenFinish;
    tone.Forget();
}

void ConverterImpl::SetCamera(std::shared_ptr<const CameraProfile> profile, std::optional<Site> origin) {
    correction.SetProfile(profile, origin);
    m_camera = std::move(profile);
    SetFinish(std::move(m_givenFinish), m_givenParts);
}

/** The finish of a frame: the given one, and what the camera gives. Null: none. */
const Finish* ConverterImpl::FinishOf(const SourceView& source) {
    if (!m_finish) return nullptr;
    if (m_camera) {
        m_finish->blackLevel = m_givenFinish ? m_givenFinish->blackLevel : Levels();
        m_finish->whiteLevel = m_givenFinish ? m_givenFinish->whiteLevel : Levels();
        TakeLevels(*m_camera, source.format, m_givenParts, *m_finish);
    }
    CheckLevels(source, *m_finish);
    return &*m_finish;
}

Route ConverterImpl::RouteFor(const Format& source, uint8_t bits, bool isFinished) const {
    const Format plain = Unpacked(source);
    if (m_learned && isFinished) {
        const uint8_t mosaicBits = m_learned->WorkingBits(source.bits);
        return {WithBits(plain, mosaicBits), 16, kWhite >> (16 - mosaicBits) << (16 - mosaicBits)};
    }
    if (m_learned) {
        const uint8_t pictureBits = bits == 8 ? 8 : source.bits;
        return {plain, pictureBits, (1u << pictureBits) - 1};
    }
    if (component) return component->RouteFor(source, bits, isFinished);
    const uint8_t monoBits = isFinished ? 16 : source.bits;
    return {WithBits(plain, monoBits), monoBits, (1u << monoBits) - 1};
}

/** Whether the library itself reads this source and writes this picture. */
bool ConverterImpl::ConvertsDirectly(const SourceView& source, const DestinationView& destination,
                                     const Route& route) const {
    return component && !m_learned && !m_finish && !correction.IsOn() && source.format == route.mosaic &&
           source.stride >= 0 && destination.stride >= 0 && component->HasDirect(route, destination.format);
}

void ConverterImpl::Require(uint32_t result, const SourceView& source, const Format& destination) const {
    if (KvxResult_Failed(result))
        throw Error(result, fmt::format("{} to {} with algorithm {}: {} (0x{:08X})", Name(source.format),
                                        Name(destination), AlgorithmName(), KvxResult_Text(result), result));
}

void ConverterImpl::ConvertDirectly(const SourceView& source, const DestinationView& destination) {
    SourceView mosaic = source;
    DestinationView picture = destination;
    if (mosaic.stride == 0) mosaic.stride = static_cast<ptrdiff_t>(RowBytes(mosaic.format, mosaic.width));
    if (picture.stride == 0) picture.stride = static_cast<ptrdiff_t>(RowBytes(picture.format, picture.width));
    Require(component->Convert(mosaic, picture, ComponentNoise(FrameNoise())), source, destination.format);
}

/** The given noise, else that of the camera. */
const std::optional<SensorNoise>& ConverterImpl::FrameNoise() const {
    return noise || !m_camera ? noise : m_camera->noise;
}

/** What the component must know: parameters with an analog gain have its noise. */
const SensorNoise* ConverterImpl::ComponentNoise(const std::optional<SensorNoise>& measured) const {
    return measured && !noiseIsOfGain ? &*measured : nullptr;
}

void ConverterImpl::ConvertRows(const SourceView& source, const Route& route, const Finish* values, const Gains& gains,
                                const PictureSink& sink) {
    RawRows rows(source, route.mosaic, values, gains);
    if (correction.IsOn()) rows.UseCorrected(correction);
    SourceView mosaic = source;
    mosaic.format = route.mosaic;
    std::optional<SensorNoise> measured = FrameNoise();
    if (measured && values) measured = BalancedNoise(*measured, source.format, *values, gains);
    if (m_learned) {
        std::optional<NoiseLine> mosaicNoise;
        if (measured) mosaicNoise = NoiseOfWhite(*measured, family);
        Require(m_learned->Convert(mosaic, rows.Source(), route.pictureBits, sink.Sink(), mosaicNoise, threads), source,
                sink.PictureFormat());
    } else if (component) {
        Require(component->ConvertRows(mosaic, route, values != nullptr, rows.Source(), sink.Sink(),
                                       ComponentNoise(measured)),
                source, sink.PictureFormat());
    } else {
        CopyGrey(rows, source.width, source.height, sink);
    }
}

const uint16_t* ConverterImpl::TableFor(const Finish* values, const Route& route, uint8_t bits) {
    if (values) return tone.Curve(*values, bits);
    const uint32_t white = (1u << bits) - 1;
    return route.pictureWhite == white ? nullptr : tone.Scaling(route.pictureWhite, bits);
}

void ConverterImpl::Convert(const SourceView& given, const DestinationView& destination) {
    Check(given, destination);
    const ThreadCountScope scope(threads);
    const SourceView source = WithMirrorParameters(given);
    const uint8_t bits = destination.format.bits;
    const Finish* const finish = FinishOf(source);
    // The parameters of a component whose algorithm is not used, if there is no finish.
    const bool hasParameters = !finish && m_learned && component->GetParameterFinish(m_parameterFinish);
    const Finish* const values = hasParameters ? &m_parameterFinish : finish;
    const Route route = RouteFor(source.format, bits, values != nullptr);
    lastReading = finish ? m_meter.Measure(source, *finish) : Reading();
    if (ConvertsDirectly(source, destination, route)) return ConvertDirectly(source, destination);
    const PixelMatrix matrix = values ? MatrixFor(*values, route.pictureWhite, lastReading.exposure) : PixelMatrix{};
    const PictureStep step{.destination = destination.format,
                           .matrix = values ? &matrix : nullptr,
                           .shift = !values && bits == 8 ? route.pictureBits - 8 : 0,
                           .byteTable = values && bits == 8 ? tone.ByteCurve(*values) : nullptr,
                           .wordTable = bits > 8 ? TableFor(values, route, bits) : nullptr};
    ConvertRows(source, route, values, lastReading.balance.gains, PictureSink(step, destination));
}

}  // namespace kvx::frame
