/**
 * @file
 * Camera frames become pictures: any source format to any destination format.
 *
 * Rules, whatever the formats:
 * - Full range: white of the source (2^bits - 1) becomes white of the destination, black 0 stays 0. 8-bit results of
 *   deeper sources are the upper 8 bits; between other depths v becomes v * (2^n - 1) / (2^m - 1), rounded half up.
 * - The fourth sample of a pixel is the largest there is: opaque.
 * - Padding and everything else outside the pixels keeps its content; what is refused leaves the whole picture alone.
 * - The picture is the same for any number of threads and any instruction set. OpenMP's settings stay as they are.
 * - A TrueSense frame without a Finish gets the colour matrix and the tone curve of the component's parameters.
 * - The TrueSense parameters "sharpnessEnable" and "impulseFilterEnable" start as 1, as in TrueSense_DefaultValues():
 *   without sharpening the noise-reducing algorithms have the sharpness of half the resolution.
 */
#ifndef KVXFRAME_CONVERTER_H
#define KVXFRAME_CONVERTER_H

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "KvxDemosaicing/KvxComponent.h"
#include "KvxFrame/Finish.h"
#include "KvxFrame/View.h"

namespace kvx::frame {

/** An algorithm of a family. */
struct Algorithm {
    const char* name;  ///< for example "edge-aware"
    int64_t number;    ///< value of the component's parameter
};

/** The algorithms that the library has for a family, the default first; none for Mono and Colour. */
KVX_API const std::vector<Algorithm>& AlgorithmsOf(Family family);

class ConverterImpl;

/** Converts frames of one family, one after the other. Used by one thread at a time; converters are independent. */
class KVX_API Converter {
public:
    /** @throws Error 0x80070007 for Family::Colour */
    explicit Converter(Family family);
    /** A converter that has been moved from can be assigned to or destroyed. */
    Converter(Converter&&) noexcept;
    /** As above. */
    Converter& operator=(Converter&&) noexcept;
    /** Gives back all memory. */
    ~Converter();

    /** The family that it was made for. */
    Family SourceFamily() const noexcept;

    /**
     * Selects an algorithm by its name, or by a number in the range of the component's parameter: "edge-aware", "2".
     * @throws Error 0x80070002 naming those that there are
     */
    void SetAlgorithm(std::string_view nameOrNumber);
    /** The name of the selected algorithm, or its number where it has none; "" for mono. */
    std::string AlgorithmName() const;

    /**
     * Sets a parameter of the component by name, from the text form of KvxComponent::SetParamAsString().
     * @throws Error with the store's result: unknown name (with the nearest), wrong type, out of range
     */
    void SetParameter(const std::string& name, const std::string& value);
    /** The value of a parameter in that form. @throws Error 0x80000002 for an unknown name */
    std::string Parameter(const std::string& name) const;
    /** All parameters, in order of registration; none for mono. */
    std::vector<_KvxStParam> Parameters() const;

    /** Threads of a conversion; 0, the default, as OpenMP is set. @throws Error 0x80070004 outside 0 to 1024 */
    void SetThreads(int count);

    /** What is done to the values; nothing: no finish. @throws Error 0x80070004 naming the field out of range */
    void SetFinish(std::optional<Finish> finish);

    /**
     * Converts one frame. After the first frame of a geometry nothing is allocated, but for what OpenCV takes inside
     * the "bayer-like" algorithm.
     *
     * @param source of this converter's family, any layout
     * @param destination of the same size, any colour format; no overlap with the source
     * @throws Error what Validate() throws; 0x80070007 another family, another size, a depth without a conversion, a
     *         black level that is not below white; what the component returns
     */
    void Convert(const SourceView& source, const DestinationView& destination);

    /** The white balance that the last frame got: found and given together. 1 before the first, and without a finish.
     */
    Gains LastGains() const noexcept;

    /** Gives back the working memory; settings stay. */
    void Release() noexcept;

private:
    std::unique_ptr<ConverterImpl> m_impl;
};

/** Settings of one conversion; empty means default. */
struct Options {
    std::string algorithm;                                        ///< see Converter::SetAlgorithm()
    std::vector<std::pair<std::string, std::string>> parameters;  ///< name and value
    int threads = 0;                                              ///< see Converter::SetThreads()
    std::optional<Finish> finish;                                 ///< see Converter::SetFinish()
};

/** One frame by a Converter of its own. For many frames keep one: it keeps its memory. @throws Error as above */
KVX_API void Convert(const SourceView& source, const DestinationView& destination, const Options& options = {});

}  // namespace kvx::frame

#endif
