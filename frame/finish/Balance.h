/** Black level and white balance of a mosaic. */
#pragma once

#include "KvxFrame/Finish.h"
#include "KvxFrame/SensorNoise.h"
#include "frame/finish/BalanceRow.h"

namespace kvx::frame {

/** Place of a stored site's filter in Levels, with mirror flags. */
size_t FilterIndex(const SourceView& source, uint32_t row, uint32_t column);

/** The levels of a finish in a format, scaled to 16 bits and rounded; by FilterIndex(). */
struct WideLevels {
    /** @param finish its levels fit the format */
    WideLevels(const Finish& finish, const Format& format);

    std::array<uint16_t, 4> black;
    std::array<uint16_t, 4> white;
};

/** @throws Error 0x80070007 if the finish's levels do not fit the source */
void CheckLevels(const SourceView& source, const Finish& finish);

/** The noise of balanced samples, which levels and gains raise. @param finish whose levels fit the source */
SensorNoise BalancedNoise(const SensorNoise& noise, const Format& source, const Finish& finish, const Gains& gains);

/** Noise with the signal as a share of white: of the clear samples of TrueSense frames, of all samples of others. */
NoiseLine NoiseOfWhite(const SensorNoise& noise, Family family);

class Balance {
public:
    /**
     * @param source a valid view
     * @param finish its levels fit the source
     * @param gains used instead of the finish's
     * @param bits depth of the results, 8 to 16
     */
    Balance(const SourceView& source, const Finish& finish, const Gains& gains, uint8_t bits);

    /** The parameters of a stored row. */
    const RowBalance& OfRow(uint32_t row) const {
        return m_rows[row % 4];
    }

private:
    std::array<RowBalance, 4> m_rows;
};

}  // namespace kvx::frame
