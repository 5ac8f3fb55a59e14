/**
 * Step 5: how steeply a colour follows green around each of its sites.
 *
 * A least-squares slope through the steps from each site to the next of its colour, right and down, with a prior of 1.
 * Saturated colours and detail that green lacks thus get a smaller slope than that of the plain difference model, 1.
 */
#pragma once

#include "KvxBayer/ipp/Lanes.h"

namespace kvx::ipp {

/** Products of steps, of green with the colour and of green with itself. */
struct StepProducts {
    float* mixed;
    float* green;
};

/** Green and samples at the colour sites of a row. */
struct ColourSites {
    const float* green;
    const float* mosaic;
};

/**
 * For each site of row y the products of its two steps, summed over the sites at -4, -2, 0 and 2 columns.
 * @param next row y + 2; @param scratch working memory
 */
void StepProductsRow(const ColourSites& row, const ColourSites& next, int lanes, const StepProducts& scratch,
                     const StepProducts& products);

/** @param products rows y - 4, y - 2, y and y + 2; @param slope at the colour sites of row y, 0..kLargestSlope */
void SlopeRow(const StepProducts products[4], int lanes, float* slope);

}  // namespace kvx::ipp
