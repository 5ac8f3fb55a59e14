/** Tables of what algorithms leave of a sensor's noise, and what they do to edges. */
#pragma once

#include <nlohmann/json.hpp>
#include <vector>

#include "quality/Restoration.h"

namespace kvx::quality {

/** Rows of figures by the titles of their columns, which are the same in every row. */
using Table = std::vector<nlohmann::ordered_json>;

/**
 * Each algorithm on each flat field at each gain. Deviations ("sd"), shifts of the mean and blotches are in 12-bit
 * codes; "less" says how many times less than with the fast algorithm, null where nothing is left.
 */
Table FlatTable(const std::vector<Setting>& settings, const std::vector<Gain>& gains);

/** The worst of all flat fields for each algorithm and gain. A cast is the difference between channels' shifts. */
Table SummaryOf(const Table& flats);

/** Widths in pixels and overshoots as shares of the step, on each edge at each gain. */
Table EdgeTable(const std::vector<Setting>& settings, const std::vector<Gain>& gains);

}  // namespace kvx::quality
