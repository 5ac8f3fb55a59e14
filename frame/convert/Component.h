/** A component of the library as the Converter uses it. */
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "KvxDemosaicing/KvxComponent.h"
#include "KvxDemosaicing/KvxImage.h"
#include "KvxDemosaicing/KvxRows.h"
#include "KvxFrame/Converter.h"

namespace kvx::frame {

/** Formats on the way of a frame through a component. */
struct Route {
    Format mosaic;          ///< input of the component, unpacked
    uint8_t pictureBits;    ///< depth of the component's output
    uint32_t pictureWhite;  ///< sample value of white in the output
};

class Component {
public:
    virtual ~Component() = default;

    /** @param isFinished whether the output must be linear, for a Finish */
    virtual Route RouteFor(const Format& source, uint8_t destinationBits, bool isFinished) const = 0;

    /** Whether Convert() makes such pictures, without a finish, as ConvertRows() and the last step would. */
    virtual bool HasDirect(const Route& route, const Format& picture) const = 0;

    /**
     * Calls the library for a picture in memory. Both views have positive strides; `mosaic` has the format of the
     * route.
     *
     * @param noise   of the mosaic, for algorithms that remove it; null: that of the parameters
     * @return the library's result
     */
    virtual uint32_t Convert(const SourceView& mosaic, const DestinationView& picture, const SensorNoise* noise) = 0;

    /**
     * Calls the library for rows.
     *
     * @param mosaic format, size and mirror flags count
     * @param pixels of the route's depth
     * @param noise  as in Convert()
     * @return the library's result
     */
    virtual uint32_t ConvertRows(const SourceView& mosaic, const Route& route, bool isFinished,
                                 const KvxRowSource& rows, const KvxPixelSink& pixels, const SensorNoise* noise) = 0;

    virtual void Release() = 0;

    /** Prepares the component for frames of an analog gain. @return their noise. @throws Error for an invalid gain */
    virtual SensorNoise SetAnalogGain(double gain) = 0;

    /**
     * Gives a finish the colour matrix and the tone curve of the parameters, for algorithms that the component does not
     * have.
     * @return whether there are such parameters
     */
    virtual bool GetParameterFinish(Finish& finish) const = 0;

    /** Selects one of the component's own algorithms. */
    void SetAlgorithm(std::string_view nameOrNumber);
    std::string AlgorithmName() const;
    void SetParameter(const std::string& name, const std::string& value);
    std::string Parameter(const std::string& name) const;
    int64_t IntParameter(const char* name) const;
    std::vector<_KvxStParam> Parameters() const;

protected:
    /** @param store owned by the derived class. @throws std::bad_alloc if it is null */
    Component(Family family, const char* algorithmParameter, KvxComponent* store);

    int64_t AlgorithmNumber() const {
        return IntParameter(m_algorithmParameter);
    }

private:
    const std::vector<Algorithm>& m_algorithms;
    const char* m_algorithmParameter;
    KvxComponent* m_store;
};

/** The components. @throws std::bad_alloc */
std::unique_ptr<Component> MakeBayerComponent();
std::unique_ptr<Component> MakeTrueSenseComponent();

/** The library's record of a view. */
_KvxImage ImageOf(const SourceView& mosaic);
_KvxImage ImageOf(const DestinationView& picture);

}  // namespace kvx::frame
