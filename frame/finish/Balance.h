/** Black level and white balance of a mosaic. */
#pragma once

#include "KvxFrame/Finish.h"
#include "KvxFrame/SensorNoise.h"
#include "frame/finish/BalanceRow.h"

namespace kvx::frame {

/** Sample value of white in the source. */
inline uint32_t WhiteLevel(const Finish& finish, const Format& format) {
    return finish.whiteLevel != 0 ? finish.whiteLevel : White(format);
}

/** @throws Error 0x80070007 if the finish's levels do not fit the source */
void CheckLevels(const SourceView& source, const Finish& finish);

/**
 * The noise of balanced samples, with signal and noise as shares of white: of the clear samples of a TrueSense frame,
 * of all samples of another. Their gains raise it.
 *
 * @param finish whose levels fit the source; null: the samples are as they are, without gains
 */
NoiseLine BalancedNoise(const SensorNoise& noise, const Format& source, const Finish* finish, const Gains& gains);

class Balance {
public:
    /**
     * @param source a valid view
     * @param finish its levels fit the source
     * @param gains used instead of the finish's
     * @param bits depth of the results, 12 or 16
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
