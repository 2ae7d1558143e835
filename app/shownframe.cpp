#include "app/shownframe.h"

static_assert(wire::FrameWidth % 6 == 0, "pairs of columns");
static_assert(wire::FrameHeight % 3 == 0, "two rows of three");

namespace {

QRgb grey(uint8_t value)
{
    return qRgb(value, value, value);
}

} // namespace

QImage shownFrame(const uint8_t *frame)
{
    QImage image(ShownFrameSize, QImage::Format_RGB32);
    auto *pixel = reinterpret_cast<QRgb *>(image.bits());
    for (int row = 0; row < image.height(); ++row) {
        const uint8_t *captured = frame + ptrdiff_t{(3 * row + 1) / 2} * wire::FrameWidth;
        // Two columns of the picture show the first and the last of three columns of the frame.
        for (const QRgb *end = pixel + image.width(); pixel != end; pixel += 2, captured += 3) {
            pixel[0] = grey(captured[0]);
            pixel[1] = grey(captured[2]);
        }
    }
    return image;
}
