#include "simulator/pictures/hand.h"

#include <algorithm>
#include <cmath>

namespace sim {
namespace {

// All coordinates are those of a frame cut from the middle of the picture.

constexpr Limb Limbs[] = {
    {{132, 372}, {70, 132}, 31, 23},    // little finger
    {{214, 330}, {184, 26}, 36, 26},    // ring finger
    {{300, 318}, {304, -22}, 38, 28},   // middle finger
    {{384, 336}, {424, 22}, 37, 27},    // index finger
    {{392, 560}, {470, 452}, 62, 40},   // thumb, lower half
    {{470, 452}, {548, 330}, 38, 27},   // thumb, upper half
    {{146, 385}, {176, 560}, 45, 78},   // palm below the little finger
    {{176, 560}, {216, 700}, 78, 84},   // its heel
    {{222, 368}, {236, 640}, 50, 80},   // palm below the ring finger
    {{300, 360}, {290, 640}, 50, 80},   // palm below the middle finger
    {{374, 378}, {350, 620}, 46, 85},   // palm below the index finger
    {{398, 480}, {376, 570}, 46, 72},   // ball of the thumb, upper half
    {{376, 570}, {330, 700}, 72, 82},   // ball of the thumb, lower half
    {{270, 700}, {270, 860}, 136, 118}, // wrist
};

// What stands out of the palm: the heels below the thumb and the little finger, the pads below
// the fingers.
constexpr Limb Pads[] = {
    {{384, 530}, {336, 640}, 34, 46}, {{170, 530}, {194, 650}, 34, 40},
    {{146, 392}, {146, 394}, 20, 20}, {{222, 366}, {222, 368}, 22, 22},
    {{304, 358}, {304, 360}, 22, 22}, {{380, 374}, {380, 376}, 22, 22},
};

constexpr Stroke Creases[] = {
    // The three principal creases.
    {{{{96, 446}, {190, 450}, {290, 420}, {342, 348}}}, 2.7F, 1.3F, 0.95F},
    {{{{424, 440}, {340, 450}, {250, 490}, {150, 560}}}, 2.7F, 0.9F, 0.9F},
    {{{{424, 436}, {330, 462}, {268, 560}, {284, 716}}}, 3.0F, 1.2F, 1.0F},
    // Wrist.
    {{{{158, 742}, {230, 756}, {310, 756}, {384, 738}}}, 2.0F, 2.0F, 0.6F},
    // Where the fingers join the palm, then their joints.
    {{{{106, 366}, {126, 358}, {146, 354}, {164, 350}}}, 1.8F, 1.8F, 0.7F},
    {{{{184, 322}, {204, 314}, {230, 314}, {250, 318}}}, 1.8F, 1.8F, 0.7F},
    {{{{264, 312}, {286, 304}, {314, 304}, {338, 312}}}, 1.8F, 1.8F, 0.7F},
    {{{{350, 322}, {372, 316}, {398, 320}, {418, 332}}}, 1.8F, 1.8F, 0.7F},
    {{{{78, 272}, {94, 266}, {112, 264}, {130, 262}}}, 1.6F, 1.6F, 0.55F},
    {{{{62, 200}, {76, 196}, {96, 194}, {110, 192}}}, 1.5F, 1.5F, 0.5F},
    {{{{170, 206}, {190, 202}, {212, 202}, {232, 204}}}, 1.6F, 1.6F, 0.6F},
    {{{{162, 112}, {182, 108}, {200, 108}, {220, 110}}}, 1.5F, 1.5F, 0.5F},
    {{{{270, 186}, {290, 182}, {314, 182}, {334, 186}}}, 1.6F, 1.6F, 0.6F},
    {{{{274, 82}, {290, 78}, {314, 78}, {332, 82}}}, 1.5F, 1.5F, 0.5F},
    {{{{370, 206}, {388, 202}, {412, 204}, {434, 210}}}, 1.6F, 1.6F, 0.6F},
    {{{{384, 112}, {400, 108}, {420, 110}, {442, 116}}}, 1.5F, 1.5F, 0.5F},
    {{{{470, 394}, {484, 402}, {502, 414}, {516, 430}}}, 1.6F, 1.6F, 0.55F},
};

constexpr int FineLines = 75;

struct Root
{
    Point from;
    float angle; ///< radians, 0 to the right, counting towards the bottom
    float width;
};

// Where the vein trees enter at the wrist.
constexpr Root Roots[] = {
    {{196, 790}, -1.80F, 5.6F},
    {{262, 800}, -1.62F, 6.2F},
    {{330, 790}, -1.32F, 5.8F},
};

constexpr int VeinGenerations = 7;

float between(std::mt19937 &random, float low, float high)
{
    return low + (high - low) * static_cast<float>(random() >> 8U) / float(1U << 24U);
}

Point shifted(Point p)
{
    return {p.x + PictureMargin, p.y + PictureMargin};
}

Point ahead(Point from, float angle, float length)
{
    return {from.x + length * std::cos(angle), from.y + length * std::sin(angle)};
}

Stroke bent(Point from, float angle, float bend, float length)
{
    const Point b = ahead(from, angle - bend, length / 3);
    const Point c = ahead(b, angle, length / 3);
    return {{from, b, c, ahead(c, angle + bend, length / 3)}, 1, 1, 1};
}

Plane emptyPicture()
{
    return {PictureWidth, PictureHeight};
}

template <size_t Count> void drawLimbs(Plane &plane, const Limb (&limbs)[Count])
{
    for (Limb limb : limbs) {
        limb.from = shifted(limb.from);
        limb.to = shifted(limb.to);
        drawLimb(plane, limb);
    }
}

Plane makeMask()
{
    Plane mask = emptyPicture();
    drawLimbs(mask, Limbs);
    mask.blur(4); // and steepened again: rounds the corners between the fingers
    for (int y = 0; y < mask.height(); ++y)
        std::transform(mask.row(y), mask.row(y) + mask.width(), mask.row(y),
                       [](float v) { return std::clamp((v - 0.5F) * 4 + 0.5F, 0.0F, 1.0F); });
    return mask;
}

Plane makeBulge(const Plane &mask)
{
    Plane near = mask;
    near.blur(9);
    Plane far = mask;
    far.blur(26);
    for (int y = 0; y < near.height(); ++y)
        std::transform(near.row(y), near.row(y) + near.width(), far.row(y), near.row(y),
                       [](float a, float b) { return 0.6F * a + 0.4F * b; });
    return near;
}

void drawFineLines(Plane &creases, std::mt19937 &random)
{
    for (int i = 0; i < FineLines; ++i) {
        const Point from{between(random, 110, 410), between(random, 350, 700)};
        // Down the heel of the thumb they follow its crease, elsewhere they run across the palm.
        const float lean = from.x > 290 && from.y > 480 ? -0.95F : 0.35F;
        Stroke line = bent(shifted(from), lean + between(random, -0.35F, 0.35F),
                           between(random, -0.3F, 0.3F), between(random, 25, 90));
        line.fromWidth = between(random, 0.7F, 1.2F);
        line.toWidth = 0.6F;
        line.strength = between(random, 0.12F, 0.38F);
        drawStroke(creases, line);
    }
}

Plane makePads()
{
    Plane pads = emptyPicture();
    drawLimbs(pads, Pads);
    pads.blur(16);
    return pads;
}

Plane makeCreases(std::mt19937 &random)
{
    Plane creases = emptyPicture();
    for (Stroke stroke : Creases) {
        for (Point &point : stroke.curve)
            point = shifted(point);
        drawStroke(creases, stroke);
    }
    drawFineLines(creases, random);
    return creases;
}

void growVein(Plane &veins, std::mt19937 &random, const Root &root, int generation)
{
    const float bend = between(random, -0.35F, 0.35F);
    Stroke vein = bent(root.from, root.angle, bend, between(random, 70, 135));
    vein.fromWidth = root.width;
    vein.toWidth = root.width * 0.84F;
    vein.strength = std::min(1.0F, 0.35F + root.width / 8);
    drawStroke(veins, vein);
    if (generation == VeinGenerations)
        return;
    // The main branch keeps towards the fingers, the side branch leaves it.
    const float side = (random() & 1U) != 0 ? 1.0F : -1.0F;
    const float upright = -1.57F + (root.angle + 1.57F) * 0.8F;
    const float mainAngle = upright - side * between(random, 0.05F, 0.3F);
    growVein(veins, random, {vein.curve[3], mainAngle, vein.toWidth}, generation + 1);
    if (generation % 2 == 0 || between(random, 0, 1) < 0.45F)
        growVein(
            veins, random,
            {vein.curve[3], root.angle + side * between(random, 0.45F, 0.9F), vein.toWidth * 0.68F},
            generation + 2 > VeinGenerations ? VeinGenerations : generation + 2);
}

Plane makeVeins(std::mt19937 &random)
{
    Plane veins = emptyPicture();
    for (Root root : Roots) {
        root.from = shifted(root.from);
        growVein(veins, random, root, 0);
    }
    veins.blur(2);
    return veins;
}

} // namespace

Hand makeHand(std::mt19937 &random)
{
    const Plane mask = makeMask();
    Plane creases = makeCreases(random);
    Plane veins = makeVeins(random);
    return {mask, makeBulge(mask), makePads(), std::move(creases), std::move(veins)};
}

} // namespace sim
