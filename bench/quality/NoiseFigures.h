/** Tables of remaining noise and of edge widths. */
#pragma once

#include <nlohmann/json.hpp>
#include <vector>

#include "quality/Restoration.h"

namespace kvx::quality {

/** Rows of figures by column title. All rows have the same columns. */
using Table = std::vector<nlohmann::ordered_json>;

/**
 * A row per algorithm, flat field and gain. Deviations ("sd"), shifts of the mean and blotches are in 12-bit
 * codes; "less" is the reduction compared with the fast algorithm, null if nothing is left.
 */
Table FlatTable(const std::vector<Setting>& settings, const std::vector<Gain>& gains);

/** The worst flat field per algorithm and gain. A cast is the difference between the shifts of the channels. */
Table SummaryOf(const Table& flats);

/** Widths in pixels and overshoots as a share of the step, per edge and gain. */
Table EdgeTable(const std::vector<Setting>& settings, const std::vector<Gain>& gains);

}  // namespace kvx::quality
