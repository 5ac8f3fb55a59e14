#include "frame/learned/fine/Network.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "frame/learned/weights/EmbeddedWeights.h"
#include "frame/learned/weights/WeightsReader.h"

namespace kvx::frame {
namespace {

/** A layer as it is in the file: [output][row][column][input]. */
struct StoredFilters {
    size_t size, inputs;
    std::vector<int16_t> weights;

    std::span<const int16_t> Of(size_t output) const {
        const size_t length = size * size * inputs;
        return std::span(weights).subspan(output * length, length);
    }
};

StoredFilters ReadFilters(WeightsReader& reader, size_t size, size_t inputs, size_t outputs) {
    return {size, inputs, reader.Words(size * size * inputs * outputs)};
}

/** The chosen filters in the order of Filters. */
Filters Packed(const StoredFilters& stored, std::span<const size_t> chosen) {
    const size_t outputs = (chosen.size() + kFilterGroup - 1) / kFilterGroup * kFilterGroup;
    const size_t length = stored.size * stored.size * stored.inputs;
    Filters filters{stored.size, stored.inputs, outputs, AlignedVector<int16_t>(length * outputs)};
    for (size_t output = 0; output < chosen.size(); ++output)
        for (size_t i = 0; i < length; ++i)
            filters.weights[(i / 2 * outputs + output) * 2 + i % 2] = stored.Of(chosen[output])[i];
    return filters;
}

/**
 * Filters of 3x3 cells for Winograd-inl.h, four times those of the paper. Only for layers over hidden ones, whose words
 * are mostly small enough; filters that do not fit in words stay as they are.
 */
void AddTransformed(Filters& filters) {
    constexpr int kFactors[4][3] = {{2, 0, 0}, {1, 1, 1}, {1, -1, 1}, {0, 0, 2}};
    const size_t cellWords = filters.inputs * filters.outputs;
    AlignedVector<int16_t> transformed(kPlaces * cellWords);
    for (size_t place = 0; place < kPlaces; ++place)
        for (size_t i = 0; i < cellWords; ++i) {
            int sum = 0;
            for (size_t row = 0; row < 3; ++row)
                for (size_t column = 0; column < 3; ++column)
                    sum += kFactors[place / 4][row] * kFactors[place % 4][column] *
                           filters.weights[(3 * row + column) * cellWords + i];
            if (std::abs(sum) > INT16_MAX) return;
            transformed[place * cellWords + i] = static_cast<int16_t>(sum);
        }
    filters.transformed = std::move(transformed);
}

std::vector<size_t> AllOf(size_t count) {
    std::vector<size_t> all(count);
    for (size_t i = 0; i < count; ++i) all[i] = i;
    return all;
}

/** The result's planes, of which those that copy a sample need no filter. */
void AddResults(Network& network, const StoredFilters& last, const StoredFilters& base, size_t count) {
    std::vector<size_t> computed;
    for (size_t plane = 0; plane < count; ++plane) {
        const auto weights = base.Of(plane);
        const auto isZero = [](int16_t weight) { return weight == 0; };
        const auto first = std::find_if_not(weights.begin(), weights.end(), isZero);
        const auto middle = static_cast<size_t>(first - weights.begin()) - base.size * base.size / 2 * base.inputs;
        const bool isCopy = std::ranges::all_of(last.Of(plane), isZero) && first != weights.end() &&
                            middle < base.inputs && *first == 1 << network.baseShift &&
                            std::all_of(first + 1, weights.end(), isZero);
        network.results.push_back({!isCopy, static_cast<uint8_t>(isCopy ? middle : computed.size())});
        if (!isCopy) computed.push_back(plane);
    }
    network.last = Packed(last, computed);
    AddTransformed(network.last);
    network.base = Packed(base, computed);
}

}  // namespace

Network ReadNetwork(std::span<const uint8_t> file) {
    constexpr uint8_t kMagic[] = {'K', 'v', 'x', 'N', 2};
    WeightsReader reader(file);
    WeightsReader::Require(std::memcmp(reader.Take(sizeof kMagic).data(), kMagic, sizeof kMagic) == 0,
                           "it begins otherwise");
    Network network{};
    network.side = reader.Byte();
    network.inputs = reader.Byte();
    network.channels = reader.Byte();
    const size_t layers = reader.Byte() + size_t{1}, baseSize = reader.Byte();
    network.hasNoise = reader.Byte() != 0;
    WeightsReader::Require(network.side == 2 || network.side == 4, "the tile has another side than 2 or 4");
    WeightsReader::Require(
        network.inputs % 2 == 0 && network.inputs > 0 && network.channels % kFilterGroup == 0 && network.channels > 0,
        "its planes do not fill vectors");
    WeightsReader::Require(baseSize == 1 || baseSize == 3, "its base has another size than 1 or 3");

    const auto shifts = reader.Take(layers + 2);
    for (const uint8_t shift : shifts) WeightsReader::Require(shift < 31, "a shift is too large");
    network.shift = shifts[layers];
    network.baseShift = shifts[layers + 1];
    WeightsReader::Require(network.shift <= network.baseShift, "its base is less precise than its last layer");
    for (size_t layer = 0; layer < layers; ++layer) {
        const size_t inputs = layer == 0 ? network.inputs : network.channels;
        Filters filters = Packed(ReadFilters(reader, 3, inputs, network.channels), AllOf(network.channels));
        if (layer > 0) AddTransformed(filters);
        std::vector<int32_t> factors(network.channels);
        if (network.hasNoise) std::ranges::copy(reader.Words(network.channels), factors.begin());
        network.hidden.push_back({std::move(filters), std::move(factors), shifts[layer]});
    }
    const size_t results = 3 * network.side * network.side;
    const StoredFilters last = ReadFilters(reader, 3, network.channels, results);
    const StoredFilters base = ReadFilters(reader, baseSize, network.inputs, results);
    reader.RequireEnd();
    AddResults(network, last, base, results);
    return network;
}

const Network& NetworkFor(Family family, bool hasNoise) {
    if (family == Family::Bayer) {
        static const Network clean = ReadNetwork(BayerFineWeights()), noisy = ReadNetwork(BayerFineNoiseWeights());
        return hasNoise ? noisy : clean;
    }
    static const Network clean = ReadNetwork(TrueSenseFineWeights()), noisy = ReadNetwork(TrueSenseFineNoiseWeights());
    return hasNoise ? noisy : clean;
}

}  // namespace kvx::frame
