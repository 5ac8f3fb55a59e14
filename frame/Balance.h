/** Black level and white balance of a whole mosaic. */
#pragma once

#include "KvxFrame/Finish.h"
#include "frame/BalanceRow.h"

namespace kvx::frame {

class Balance {
public:
    /**
     * @param source a valid view; `blackLevel` less than its white
     * @param bits of the results, 12 or 16
     */
    Balance(const SourceView& source, uint32_t blackLevel, const Gains& gains, uint8_t bits);

    /** For the samples of a row as they are stored. */
    const RowBalance& OfRow(uint32_t row) const {
        return m_rows[row % 4];
    }

private:
    std::array<RowBalance, 4> m_rows;
};

}  // namespace kvx::frame
