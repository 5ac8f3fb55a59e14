/** frame::Converter for arrays and for several Python threads. */
#pragma once

#include <array>
#include <mutex>
#include <string>
#include <vector>

#include "KvxFrame/Converter.h"
#include "python/native/Arrays.h"

namespace kvx::python {

/** A finish, and what the caller gave of it. */
struct GivenFinish {
    frame::Finish finish;
    frame::GivenParts given;
};

/** Each call releases the interpreter's lock and then waits until no other thread uses the converter. */
class ArrayConverter {
public:
    explicit ArrayConverter(frame::Family family) : m_converter(family) {}

    /**
     * @param out an array to write into, or None for a new one
     * @param checksDepth whether samples beyond their depth are refused
     * @return that array
     */
    pybind11::object Convert(const pybind11::object& source, const frame::Format& format, const frame::Format& to,
                             const pybind11::object& out, std::optional<uint32_t> width, std::optional<uint32_t> height,
                             bool checksDepth);

    void SetAlgorithm(const std::string& nameOrNumber);
    std::string AlgorithmName();
    void SetThreads(int count);
    void SetParameter(const std::string& name, const std::string& value);
    std::string Parameter(const std::string& name);
    std::vector<_KvxStParam> Parameters();
    frame::Family Family() const {
        return m_converter.SourceFamily();
    }
    void SetFinish(const std::optional<GivenFinish>& finish);
    void SetAnalogGain(std::optional<double> gain);
    /**
     * @param path of a profile; nullopt: none
     * @param findsDefects whether outliers count as defects
     * @return sentences about the profile
     */
    std::vector<std::string> SetCamera(const std::optional<std::string>& path, bool findsDefects);
    std::array<double, 4> LastGains();
    double LastExposure();
    void Release();

private:
    /** `use(converter)` may not touch Python objects. */
    template <class Use>
    auto Locked(const Use& use) {
        const pybind11::gil_scoped_release noGil;  // before the mutex: its holder may wait for the interpreter
        const std::lock_guard lock(m_mutex);
        return use(m_converter);
    }

    std::mutex m_mutex;
    frame::Converter m_converter;
};

}  // namespace kvx::python
