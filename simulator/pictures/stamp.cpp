#include "simulator/pictures/stamp.h"

#include "link/wire.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace sim {
namespace {

constexpr int GlyphWidth = 5;
constexpr int GlyphHeight = 7;
constexpr int Scale = 2;
constexpr int Border = 2 * Scale;
constexpr int Advance = (GlyphWidth + 1) * Scale;
constexpr int LineHeight = GlyphHeight * Scale + 2 * Border;

struct Glyph
{
    char letter;
    std::array<quint8, GlyphHeight> rows; ///< five bits each, the leftmost dot in bit 4
};

constexpr Glyph Glyphs[] = {
    {'S', {0x0F, 0x10, 0x10, 0x0E, 0x01, 0x01, 0x1E}},
    {'I', {0x0E, 0x04, 0x04, 0x04, 0x04, 0x04, 0x0E}},
    {'M', {0x11, 0x1B, 0x15, 0x15, 0x11, 0x11, 0x11}},
    {'U', {0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x0E}},
    {'L', {0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x1F}},
    {'A', {0x0E, 0x11, 0x11, 0x1F, 0x11, 0x11, 0x11}},
    {'T', {0x1F, 0x04, 0x04, 0x04, 0x04, 0x04, 0x04}},
    {'E', {0x1F, 0x10, 0x10, 0x1E, 0x10, 0x10, 0x1F}},
    {'D', {0x1E, 0x11, 0x11, 0x11, 0x11, 0x11, 0x1E}},
    {'0', {0x0E, 0x11, 0x13, 0x15, 0x19, 0x11, 0x0E}},
    {'1', {0x04, 0x0C, 0x04, 0x04, 0x04, 0x04, 0x0E}},
    {'2', {0x0E, 0x11, 0x01, 0x02, 0x04, 0x08, 0x1F}},
    {'3', {0x1F, 0x02, 0x04, 0x02, 0x01, 0x11, 0x0E}},
    {'4', {0x02, 0x06, 0x0A, 0x12, 0x1F, 0x02, 0x02}},
    {'5', {0x1F, 0x10, 0x1E, 0x01, 0x01, 0x11, 0x0E}},
    {'6', {0x06, 0x08, 0x10, 0x1E, 0x11, 0x11, 0x0E}},
    {'7', {0x1F, 0x01, 0x02, 0x04, 0x08, 0x08, 0x08}},
    {'8', {0x0E, 0x11, 0x11, 0x0E, 0x11, 0x11, 0x0E}},
    {'9', {0x0E, 0x11, 0x11, 0x0F, 0x01, 0x02, 0x0C}},
};

const Glyph *findGlyph(char letter)
{
    const auto *found = std::find_if(std::begin(Glyphs), std::end(Glyphs),
                                     [&](const Glyph &glyph) { return glyph.letter == letter; });
    return found == std::end(Glyphs) ? nullptr : found;
}

quint8 *pixel(quint8 *frame, int x, int y)
{
    return frame + std::ptrdiff_t{wire::FrameWidth} * y + x;
}

void fillBox(quint8 *topLeft, int width, int height, quint8 value)
{
    for (int row = 0; row < height; ++row)
        std::fill_n(pixel(topLeft, 0, row), width, value);
}

void drawGlyph(quint8 *topLeft, const Glyph &glyph)
{
    for (int row = 0; row < GlyphHeight; ++row)
        for (int column = 0; column < GlyphWidth; ++column)
            if ((glyph.rows[static_cast<size_t>(row)] >> (GlyphWidth - 1 - column)) & 1)
                fillBox(pixel(topLeft, column * Scale, row * Scale), Scale, Scale, 255);
}

} // namespace

void stampText(quint8 *frame, const char *text)
{
    constexpr int Fitting = (wire::FrameWidth - 2 * Border) / Advance;
    const int letters = std::min(static_cast<int>(std::strlen(text)), Fitting);
    quint8 *corner = pixel(frame, 0, wire::FrameHeight - LineHeight);
    fillBox(corner, letters * Advance + 2 * Border, LineHeight, 0);
    for (int i = 0; i < letters; ++i)
        if (const Glyph *glyph = findGlyph(text[i]))
            drawGlyph(pixel(corner, Border + i * Advance, Border), *glyph);
}

} // namespace sim
