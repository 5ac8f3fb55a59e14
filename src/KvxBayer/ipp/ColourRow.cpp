#include "KvxBayer/ipp/ColourRow.h"

#include "KvxBayer/ipp/Method.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "KvxBayer/ipp/ColourRow.cpp"
#include <hwy/foreach_target.h>  // compiles this file once per instruction set

#include "KvxBayer/ipp/Weights-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::ipp::HWY_NAMESPACE {
namespace {

enum { kUp3, kUp, kHere, kDown, kDown3 };  // the rows that both steps read

/** How a colour difference steps from the site, in four directions: across it, and on to the next but one. */
HWY_INLINE Four Steps(const Four& near, const Four& far) {
    const Vec acrossA = Distance(near.a, near.opposite), acrossB = Distance(near.b, near.oppositeB);
    return {acrossA + Distance(near.a, far.a), acrossA + Distance(near.opposite, far.opposite),
            acrossB + Distance(near.b, far.b), acrossB + Distance(near.oppositeB, far.oppositeB)};
}

HWY_INLINE Vec Cost(Vec greenHere, Vec greenThere, Vec step) {
    return Squared((Set(kGreenShare) * Distance(greenThere, greenHere) + step) + Set(kStepGuard));
}

HWY_INLINE Four Costs(Vec greenHere, const Four& green, const Four& steps) {
    return {Cost(greenHere, green.a, steps.a), Cost(greenHere, green.opposite, steps.opposite),
            Cost(greenHere, green.b, steps.b), Cost(greenHere, green.oppositeB, steps.oppositeB)};
}

/** The weighted mean of the neighbours' colours, moved along the slope from their green to this one. */
struct Follower {
    Four weights;
    Vec inverseTotal, greenHere, greenSum;

    HWY_INLINE Vec Colour(const Four& differences, Vec slope) const {
        const Vec offset = WeightedSum(weights, differences) + (Set(1.0f) - slope) * greenSum;
        return offset * inverseTotal + slope * greenHere;
    }
};

HWY_INLINE Follower Follow(Vec greenHere, const Four& green, const Four& steps) {
    const Four weights = InverseWeights(Costs(greenHere, green, steps));
    return {weights, Set(1.0f) / Sum(weights), greenHere, WeightedSum(weights, green)};
}

void OtherColourRow(const ColourRowData rows[5], int phase, float maximum, int lanes, float* other) {
    const Vec zero = Set(0.0f), limit = Set(maximum), quarter = Set(0.25f);
    for (int i = 0; i < lanes; i += kStep) {
        const int west = i + phase - 1, east = i + phase;  // diagonal neighbours, in the rows of the other phase
        const auto at = [&](const float* ColourRowData::*plane, int up, int down, int left, int right) HWY_ATTR {
            return Four{Load(rows[up].*plane + left), Load(rows[down].*plane + right), Load(rows[up].*plane + right),
                        Load(rows[down].*plane + left)};
        };
        const Four near = at(&ColourRowData::own, kUp, kDown, west, east);
        const Four far = at(&ColourRowData::own, kUp3, kDown3, west - 1, east + 1);
        const Four green = at(&ColourRowData::green, kUp, kDown, west, east);
        const Vec slope = Sum(at(&ColourRowData::slope, kUp, kDown, west, east)) * quarter;
        const Vec greenHere = Load(rows[kHere].green + i);
        const Vec colour = Follow(greenHere, green, Steps(near, far)).Colour(near, slope);
        Store(Clamped(colour, zero, limit) - greenHere, other + i);
    }
}

void ColoursAtGreenRow(const ColourRowData rows[5], const float* mosaic, int phase, int lanes,
                       const MissingColours& out) {
    using Plane = const float* ColourRowData::*;
    const Vec half = Set(0.5f);
    for (int i = 0; i < lanes; i += kStep) {
        const int west = i - phase, east = west + 1;
        // A colour lies in one plane to the sides of the site, and in the other above and below it.
        const auto at = [&](Plane sides, Plane above, int up, int down, int left, int right) HWY_ATTR {
            return Four{Load(rows[kHere].*sides + left), Load(rows[kHere].*sides + right), Load(rows[up].*above + i),
                        Load(rows[down].*above + i)};
        };
        const auto near = [&](Plane sides, Plane above) HWY_ATTR { return at(sides, above, kUp, kDown, west, east); };
        const auto far = [&](Plane sides, Plane above)
                             HWY_ATTR { return at(sides, above, kUp3, kDown3, west - 1, east + 1); };
        constexpr Plane ownPlane = &ColourRowData::own, otherPlane = &ColourRowData::other;
        const Four nearOwn = near(ownPlane, otherPlane), nearOther = near(otherPlane, ownPlane);
        const Four stepsOwn = Steps(nearOwn, far(ownPlane, otherPlane));
        const Four stepsOther = Steps(nearOther, far(otherPlane, ownPlane));
        const Four steps{(stepsOwn.a + stepsOther.a) * half, (stepsOwn.opposite + stepsOther.opposite) * half,
                         (stepsOwn.b + stepsOther.b) * half, (stepsOwn.oppositeB + stepsOther.oppositeB) * half};
        const Follower follower = Follow(Load(mosaic + i), near(&ColourRowData::green, &ColourRowData::green), steps);
        const Vec ownSlope = (Load(rows[kHere].slope + west) + Load(rows[kHere].slope + east)) * half;
        const Vec otherSlope = (Load(rows[kUp].slope + i) + Load(rows[kDown].slope + i)) * half;
        Store(follower.Colour(nearOwn, ownSlope), out.ownAtGreen + i);
        Store(follower.Colour(nearOther, otherSlope), out.otherAtGreen + i);
        Store(Load(rows[kHere].other + i) + Load(rows[kHere].green + i), out.otherAtColour + i);
    }
}

}  // namespace
}  // namespace kvx::ipp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::ipp {
HWY_EXPORT(OtherColourRow);
HWY_EXPORT(ColoursAtGreenRow);

void OtherColourRow(const ColourRowData rows[5], int phase, float maximum, int lanes, float* other) {
    HWY_DYNAMIC_DISPATCH(OtherColourRow)(rows, phase, maximum, lanes, other);
}

void ColoursAtGreenRow(const ColourRowData rows[5], const float* mosaic, int phase, int lanes,
                       const MissingColours& out) {
    HWY_DYNAMIC_DISPATCH(ColoursAtGreenRow)(rows, mosaic, phase, lanes, out);
}
}  // namespace kvx::ipp
#endif
