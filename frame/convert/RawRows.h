/** The rows of a mosaic as an interpolation reads them: unpacked, with black level and white balance. */
#pragma once

#include <optional>

#include "KvxDemosaicing/KvxRows.h"
#include "KvxFrame/View.h"
#include "frame/camera/MosaicCorrection.h"
#include "frame/finish/Balance.h"

namespace kvx::frame {

class RawRows {
public:
    /**
     * @param source a valid view, which stays in place
     * @param format of the results: the source's, unpacked, with the same or more bits
     * @param finish applied with `gains`; its levels fit the source; null: none
     */
    RawRows(const SourceView& source, const Format& format, const Finish* finish, const Gains& gains);

    /** Corrects the rows, or the mosaic as a whole if defects need the rows above and below. */
    void UseCorrected(MosaicCorrection& correction);

    /** Reads samples as words. Several threads may read at the same time. */
    void Read(uint32_t row, uint32_t column, uint32_t count, uint16_t* samples) const noexcept;

    /** For the library, which calls this object. */
    KvxRowSource Source() const;

private:
    const SourceView& m_source;
    int m_bits;
    bool m_widens;  // to more bits, without a finish
    std::optional<Balance> m_balance;
    const MosaicCorrection* m_correction = nullptr;  // of single rows
    const uint16_t* m_corrected = nullptr;           // rows without padding
};

}  // namespace kvx::frame
