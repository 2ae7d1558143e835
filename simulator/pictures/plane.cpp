#include "simulator/pictures/plane.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace sim {
namespace {

constexpr int BlurPasses = 3;

float mix(float a, float b, float t)
{
    return a + (b - a) * t;
}

Point mix(Point a, Point b, float t)
{
    return {mix(a.x, b.x, t), mix(a.y, b.y, t)};
}

Point pointOn(const std::array<Point, 4> &curve, float t)
{
    const Point a = mix(curve[0], curve[1], t);
    const Point b = mix(curve[1], curve[2], t);
    const Point c = mix(curve[2], curve[3], t);
    return mix(mix(a, b, t), mix(b, c, t), t);
}

float distance(Point a, Point b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

/// The pixels from first to last (excluded) that a shape between two coordinates can touch.
struct Span
{
    Span(float low, float high, int limit)
        : first(std::max(0, static_cast<int>(std::floor(low)))),
          last(std::min(limit, static_cast<int>(std::ceil(high)) + 1))
    {
    }
    int first;
    int last;
};

template <typename Value>
void drawWithin(Plane &plane, Span columns, Span rows, const Value &valueAt)
{
    for (int y = rows.first; y < rows.last; ++y) {
        float *line = plane.row(y);
        for (int x = columns.first; x < columns.last; ++x)
            line[x] =
                std::max(line[x], valueAt(Point{static_cast<float>(x), static_cast<float>(y)}));
    }
}

void drawDot(Plane &plane, Point centre, float radius, float strength)
{
    const Span columns(centre.x - radius, centre.x + radius, plane.width());
    const Span rows(centre.y - radius, centre.y + radius, plane.height());
    drawWithin(plane, columns, rows, [&](Point p) {
        const float dx = (p.x - centre.x) / radius;
        const float dy = (p.y - centre.y) / radius;
        const float rest = std::max(0.0F, 1.0F - dx * dx - dy * dy);
        return strength * rest * rest;
    });
}

} // namespace

Plane::Plane(int width, int height)
    : m_width(width),
      m_height(height),
      m_pixels(static_cast<size_t>(width) * static_cast<size_t>(height), 0.0F)
{
}

Plane Plane::noise(int width, int height, std::mt19937 &random)
{
    Plane plane(width, height);
    for (float &pixel : plane.m_pixels)
        pixel = static_cast<float>(random() >> 8U) / float(1U << 23U) - 1.0F;
    return plane;
}

void Plane::blur(int radius)
{
    for (int pass = 0; pass < BlurPasses; ++pass) {
        blurRows(radius);
        blurColumns(radius);
    }
}

void Plane::blurRows(int radius)
{
    const float scale = 1.0F / static_cast<float>(2 * radius + 1);
    std::vector<float> source(static_cast<size_t>(m_width) + 2 * static_cast<size_t>(radius) + 1);
    for (int y = 0; y < m_height; ++y) {
        float *line = row(y);
        std::fill_n(source.begin(), radius, line[0]);
        std::copy_n(line, m_width, source.begin() + radius);
        std::fill_n(source.begin() + radius + m_width, radius + 1, line[m_width - 1]);
        const float *leaving = source.data();
        const float *entering = leaving + radius + radius;
        float sum = std::accumulate(leaving, entering, 0.0F);
        for (int x = 0; x < m_width; ++x) {
            sum += *entering++;
            line[x] = sum * scale;
            sum -= *leaving++;
        }
    }
}

void Plane::blurColumns(int radius)
{
    const float scale = 1.0F / static_cast<float>(2 * radius + 1);
    const Plane source = *this;
    const auto sourceRow = [&](int y) { return source.row(std::clamp(y, 0, m_height - 1)); };
    std::vector<float> sums(static_cast<size_t>(m_width), 0.0F);
    const auto add = [&](const float *line, float sign) {
        for (size_t x = 0; x < sums.size(); ++x)
            sums[x] += sign * line[x];
    };
    for (int y = -radius; y < radius; ++y)
        add(sourceRow(y), 1.0F);
    for (int y = 0; y < m_height; ++y) {
        add(sourceRow(y + radius), 1.0F);
        std::transform(sums.begin(), sums.end(), row(y), [&](float sum) { return sum * scale; });
        add(sourceRow(y - radius), -1.0F);
    }
}

void Plane::normalize()
{
    float largest = 0;
    for (const float pixel : m_pixels)
        largest = std::max(largest, std::abs(pixel));
    if (largest > 0)
        for (float &pixel : m_pixels)
            pixel /= largest;
}

void drawLimb(Plane &plane, const Limb &limb)
{
    const float reach = std::max(limb.fromRadius, limb.toRadius) + 1;
    const Span columns(std::min(limb.from.x, limb.to.x) - reach,
                       std::max(limb.from.x, limb.to.x) + reach, plane.width());
    const Span rows(std::min(limb.from.y, limb.to.y) - reach,
                    std::max(limb.from.y, limb.to.y) + reach, plane.height());
    const Point axis{limb.to.x - limb.from.x, limb.to.y - limb.from.y};
    const float square = std::max(axis.x * axis.x + axis.y * axis.y, 1e-6F);
    drawWithin(plane, columns, rows, [&](Point p) {
        const float along = ((p.x - limb.from.x) * axis.x + (p.y - limb.from.y) * axis.y) / square;
        const float t = std::clamp(along, 0.0F, 1.0F);
        const float depth =
            mix(limb.fromRadius, limb.toRadius, t) - distance(p, mix(limb.from, limb.to, t));
        return std::clamp(depth + 0.5F, 0.0F, 1.0F);
    });
}

void drawStroke(Plane &plane, const Stroke &stroke)
{
    const auto &c = stroke.curve;
    const float length = distance(c[0], c[1]) + distance(c[1], c[2]) + distance(c[2], c[3]);
    const int steps = std::max(2, static_cast<int>(length));
    for (int i = 0; i <= steps; ++i) {
        const float t = static_cast<float>(i) / static_cast<float>(steps);
        const float width = mix(stroke.fromWidth, stroke.toWidth, t);
        drawDot(plane, pointOn(c, t), 2 * width, stroke.strength);
    }
}

} // namespace sim
