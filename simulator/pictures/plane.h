#pragma once

#include <array>
#include <cstddef>
#include <random>
#include <vector>

namespace sim {

struct Point
{
    float x = 0;
    float y = 0;
};

/// A grey picture under construction: one float per pixel, rows top to bottom.
class Plane
{
public:
    Plane(int width, int height);

    /// Every pixel drawn evenly from -1 to 1.
    static Plane noise(int width, int height, std::mt19937 &random);

    int width() const { return m_width; }
    int height() const { return m_height; }
    float *row(int y) { return m_pixels.data() + offset(y); }
    const float *row(int y) const { return m_pixels.data() + offset(y); }

    /// Close to a Gaussian blur, in time that does not grow with the radius (pixels, 1 or more).
    void blur(int radius);
    /// Scales so that the pixel farthest from 0 becomes 1 or -1.
    void normalize();

private:
    std::size_t offset(int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width);
    }
    void blurRows(int radius);
    void blurColumns(int radius);

    int m_width;
    int m_height;
    std::vector<float> m_pixels;
};

/// A straight limb with round ends; radii in pixels.
struct Limb
{
    Point from;
    Point to;
    float fromRadius;
    float toRadius;
};

/// A soft line along a cubic curve; half widths in pixels, strength as drawn at its middle.
struct Stroke
{
    std::array<Point, 4> curve;
    float fromWidth;
    float toWidth;
    float strength;
};

/// Both keep the larger of the value drawn and the value already there; what lies outside the
/// plane is cut off.
void drawLimb(Plane &plane, const Limb &limb);
void drawStroke(Plane &plane, const Stroke &stroke);

} // namespace sim
