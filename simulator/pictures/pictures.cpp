#include "simulator/pictures/pictures.h"

#include "simulator/pictures/hand.h"

#include <algorithm>
#include <cmath>

namespace sim {
namespace {

constexpr float RidgePeriod = 5.5F; // pixels

/// Everything that does not repeat: slow mottling, the wandering of the ridges and sensor grain.
struct Texture
{
    Plane slow;
    Plane grain;
};

Texture makeTexture(std::mt19937 &random)
{
    Texture texture{Plane::noise(PictureWidth, PictureHeight, random),
                    Plane::noise(PictureWidth, PictureHeight, random)};
    texture.slow.blur(24);
    texture.slow.normalize();
    return texture;
}

/// Height of the skin, whose slope decides how much light it returns.
Plane makeRelief(const Hand &hand)
{
    Plane relief = hand.bulge;
    for (int y = 0; y < relief.height(); ++y)
        for (int x = 0; x < relief.width(); ++x)
            relief.row(y)[x] = 60 * hand.bulge.row(y)[x] + 24 * hand.pads.row(y)[x] -
                               1.8F * hand.creases.row(y)[x];
    return relief;
}

/// A pixel with everything known about its place.
struct Spot
{
    float mask, bulge, pad, crease, vein, slope, slow, grain, ridge;
};

/// Light comes from the top left.
float slopeAt(const Plane &relief, int x, int y)
{
    const int left = std::max(x - 1, 0);
    const int up = std::max(y - 1, 0);
    const float here = relief.row(y)[x];
    return 0.7F * (here - relief.row(y)[left]) + 0.7F * (here - relief.row(up)[x]);
}

float ridgeAt(int x, int y, float slow)
{
    const float along = 0.45F * static_cast<float>(x) + 0.9F * static_cast<float>(y);
    return std::sin(6.2832F * (along + 60 * slow) / RidgePeriod);
}

float palmprintValue(const Spot &s)
{
    const float thickness = std::clamp((s.bulge - 0.45F) / 0.55F, 0.0F, 1.0F);
    const float lit = 62 + 96 * std::sqrt(thickness) + 22 * s.pad + 16 * s.slope + 16 * s.slow;
    const float skin = lit * (1 - 0.48F * s.crease) + 3.5F * s.ridge + 3 * s.grain;
    return s.mask * skin + (1 - s.mask) * (12 + 4 * s.slow) + 2 * s.grain;
}

float veinValue(const Spot &s)
{
    const float thickness = std::clamp((s.bulge - 0.4F) / 0.6F, 0.0F, 1.0F);
    const float lit = 112 + 84 * thickness + 16 * s.pad + 4 * s.slope + 12 * s.slow;
    const float depth = 0.42F * s.vein * (0.35F + 0.65F * thickness);
    const float skin = lit * (1 - depth) * (1 - 0.1F * s.crease);
    return s.mask * skin + (1 - s.mask) * (20 + 5 * s.slow) + 2 * s.grain;
}

char grey(float value)
{
    return static_cast<char>(static_cast<unsigned char>(std::clamp(value, 0.0F, 255.0F)));
}

void paintRow(const Hand &hand, const Plane &relief, const Texture &texture, int y, char *palmprint,
              char *vein)
{
    for (int x = 0; x < PictureWidth; ++x) {
        const float slow = texture.slow.row(y)[x];
        const Spot spot{hand.mask.row(y)[x],
                        hand.bulge.row(y)[x],
                        hand.pads.row(y)[x],
                        hand.creases.row(y)[x],
                        hand.veins.row(y)[x],
                        slopeAt(relief, x, y),
                        slow,
                        texture.grain.row(y)[x],
                        ridgeAt(x, y, slow)};
        palmprint[x] = grey(palmprintValue(spot));
        vein[x] = grey(veinValue(spot));
    }
}

std::shared_ptr<const Pictures> drawPictures(quint32 seed)
{
    std::mt19937 random(seed);
    const Hand hand = makeHand(random);
    const Plane relief = makeRelief(hand);
    const Texture texture = makeTexture(random);
    auto pictures = std::make_shared<Pictures>();
    pictures->palmprint.resize(PictureWidth * PictureHeight);
    pictures->vein.resize(PictureWidth * PictureHeight);
    char *palmprint = pictures->palmprint.data();
    char *vein = pictures->vein.data();
    for (int y = 0; y < PictureHeight; ++y, palmprint += PictureWidth, vein += PictureWidth)
        paintRow(hand, relief, texture, y, palmprint, vein);
    return pictures;
}

} // namespace

std::shared_ptr<const Pictures> picturesFor(quint32 seed)
{
    static quint32 lastSeed = 0;
    static std::shared_ptr<const Pictures> last;
    if (!last || lastSeed != seed) {
        last = drawPictures(seed);
        lastSeed = seed;
    }
    return last;
}

} // namespace sim
