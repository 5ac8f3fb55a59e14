/** Black level and white balance of a whole mosaic. */
#pragma once

#include "KvxFrame/Finish.h"
#include "frame/finish/BalanceRow.h"

namespace kvx::frame {

/** White in samples of the source. */
inline uint32_t WhiteLevel(const Finish& finish, const Format& format) {
    return finish.whiteLevel != 0 ? finish.whiteLevel : White(format);
}

/** @throws Error 0x80070007 where the finish's levels are none of the source */
void CheckLevels(const SourceView& source, const Finish& finish);

class Balance {
public:
    /**
     * @param source a valid view
     * @param finish with levels that fit the source
     * @param gains in place of the finish's
     * @param bits of the results, 12 or 16
     */
    Balance(const SourceView& source, const Finish& finish, const Gains& gains, uint8_t bits);

    /** For the samples of a row as they are stored. */
    const RowBalance& OfRow(uint32_t row) const {
        return m_rows[row % 4];
    }

private:
    std::array<RowBalance, 4> m_rows;
};

}  // namespace kvx::frame
