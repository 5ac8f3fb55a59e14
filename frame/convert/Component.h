/** What a Converter needs of a family: its part of the library, and the way to it. */
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "KvxDemosaicing/KvxComponent.h"
#include "KvxDemosaicing/KvxImage.h"
#include "KvxFrame/Converter.h"

namespace kvx::frame {

/** How frames of one format go through a component. */
struct Route {
    Format mosaic;          ///< unpacked; what the component reads
    uint8_t pictureBits;    ///< depth class of what it writes
    uint32_t pictureWhite;  ///< its white
};

class Component {
public:
    virtual ~Component() = default;

    /** @param isFinished whether the values are to be linear, for a Finish */
    virtual Route RouteFor(const Format& source, uint8_t destinationBits, bool isFinished) const = 0;

    /**
     * One call of the library. Both views have positive steps, and `mosaic` the format of the route.
     *
     * @param picture three samples per pixel, of the route's depth class
     * @return the library's result
     */
    virtual uint32_t Convert(const SourceView& mosaic, const DestinationView& picture, bool isFinished) = 0;

    virtual void Release() = 0;

    const std::vector<Algorithm>& Algorithms() const {
        return m_algorithms;
    }
    void SetAlgorithm(std::string_view nameOrNumber);
    std::string AlgorithmName() const;
    void SetParameter(const std::string& name, const std::string& value);
    std::string Parameter(const std::string& name) const;
    int64_t IntParameter(const char* name) const;
    std::vector<_KvxStParam> Parameters() const;

protected:
    /** @param algorithmParameter its name; `store` stays the derived class's. @throws std::bad_alloc for null */
    Component(Family family, const char* algorithmParameter, KvxComponent* store);

    int64_t AlgorithmNumber() const {
        return IntParameter(m_algorithmParameter);
    }

private:
    const std::vector<Algorithm>& m_algorithms;
    const char* m_algorithmParameter;
    KvxComponent* m_store;
};

/** The component of a mosaic's family. */
std::unique_ptr<Component> MakeBayerComponent();
std::unique_ptr<Component> MakeTrueSenseComponent();

/** A record for the library. */
_KvxImage ImageOf(const SourceView& mosaic);
_KvxImage ImageOf(const DestinationView& picture);

}  // namespace kvx::frame
