/**
 * The numbers of the in-house interpolator; docs/ipp.md explains them.
 *
 * Samples are floats in units of 1/256 of full scale, so that the constants apply to all depths. The conversion to the
 * unit and back is exact.
 */
#pragma once

namespace kvx::ipp {

constexpr int kDepthOfUnit = 8;

/** Share of a line's second difference in a directional estimate; 1/4 would assume equal curvature of all colours. */
constexpr float kBend = 3.0f / 16.0f;

/** Added to a window's sum of 13 gradients, and to its sums of squares where they are divided by: flat areas have 0. */
constexpr float kActivityGuard = 0.125f;
/** Weight of noise relative to change in the choice between a short and a long line. */
constexpr float kNoiseShare = 8.0f;

/** Colour follows green with this slope's prior weight, which is a sum of 32 squares of steps. */
constexpr float kSlopePrior = 2000.0f;
constexpr float kLargestSlope = 2.0f;

/** A step of green says less about a step of the colour difference than the difference itself. */
constexpr float kGreenShare = 0.25f;
constexpr float kStepGuard = 8.0f;

/** A pixel's value depends on so many columns and rows to each side. */
constexpr int kReach = 18;

}  // namespace kvx::ipp
