/** Corrects the mosaics of a camera by its profile, in front of the interpolation. */
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "KvxFrame/CameraProfile.h"
#include "frame/base/Buffer.h"
#include "frame/camera/DefectMask.h"
#include "frame/camera/DefectRepair.h"
#include "frame/camera/FrameNoise.h"
#include "frame/camera/OutlierRow.h"
#include "frame/camera/ShadingRows.h"
#include "frame/finish/Balance.h"

namespace kvx::frame {

class MosaicCorrection {
public:
    /** @param profile valid; null: none @param origin place of the frames in the profile's; nullopt: same size */
    void SetProfile(std::shared_ptr<const CameraProfile> profile, std::optional<Site> origin);
    void SetDefects(Defects defects) {
        m_searches = defects == Defects::Auto;
    }

    /** Whether there is something to correct. */
    bool IsOn() const {
        return m_hasMaps || m_searches;
    }

    /** Whether rows cannot be corrected one by one. */
    bool NeedsNeighbours() const {
        return m_searches || (m_profile && !(m_profile->hotPixels.empty() && m_profile->deadPixels.empty()));
    }

    /** RequireFit() of the profile, if there is one. */
    void Check(const SourceView& frame) const {
        if (m_profile) RequireFit(*m_profile, frame, m_origin);
    }

    /**
     * Corrects a frame that Check() accepts.
     * @return the mosaic in words without padding, valid until the next call
     */
    const uint16_t* Correct(const SourceView& frame, const Balance& balance);
    void Release() noexcept;

    /** Prepares for a frame that Check() accepts; fast for frames of the same geometry. */
    void Prepare(const SourceView& frame);

    /** The correction of a row of the prepared frame. */
    RowCorrection OfRow(uint32_t row) const;

    /**
     * Replaces the defects of a corrected mosaic: listed ones, and outliers if they are searched.
     * @param frame  the prepared frame, from which the mosaic was made
     * @param mosaic words without padding
     */
    void RepairDefects(const SourceView& frame, const Balance& balance, uint16_t* mosaic);

private:
    void PreparePattern(const SourceView& frame, const Site& origin);
    OutlierLimits LimitsOf(uint32_t row, const RowBalance& balance) const;
    void FindDefects(uint32_t row, const RowBalance& balance, const uint16_t* mosaic);

    std::shared_ptr<const CameraProfile> m_profile;
    std::optional<Site> m_origin;
    bool m_hasMaps = false, m_searches = false;

    std::optional<SourceView> m_prepared;  // its data is not used
    std::vector<int16_t> m_pattern;
    ShadingRows m_shading;
    DefectRepair m_repair;
    DefectMask m_listed, m_all;
    Buffer m_mosaic;
    FrameNoise m_frameNoise;
    SensorNoise m_noise{};  // of the frame
    double m_rounding = 0;  // variance of a sample's rounding, as of a noise line
};

}  // namespace kvx::frame
