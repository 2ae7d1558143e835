#pragma once

#include "simulator/pictures/plane.h"

#include "link/wire.h"

#include <random>

namespace sim {

/// Pictures are larger than the frames cut from them by this many pixels on every side, so that
/// the cut can wander.
constexpr int PictureMargin = 40;
constexpr int PictureWidth = wire::FrameWidth + 2 * PictureMargin;
constexpr int PictureHeight = wire::FrameHeight + 2 * PictureMargin;

/// The open right hand that both cameras look at. Planes of picture size.
struct Hand
{
    Plane mask;    ///< 1 on the hand, 0 beside it
    Plane bulge;   ///< 0.5 at the outline, rising to 1 where the hand is thick
    Plane pads;    ///< 0 on the flat of the palm, up to 1 on the pads around it
    Plane creases; ///< 0 on smooth skin, up to 1 in the deepest crease
    Plane veins;   ///< 0 away from veins, up to 1 above the thickest
};

/// Always the same hand for the same state of `random`.
Hand makeHand(std::mt19937 &random);

} // namespace sim
