#include "app/shownframe.h"

#include "link/wire.h"

#include <vector>

namespace {

/// For each of so many pixels the one of the frame at its middle.
std::vector<size_t> nearest(int shownPixels, size_t capturedPixels)
{
    const auto shown = static_cast<size_t>(shownPixels);
    std::vector<size_t> indexes(shown);
    for (size_t i = 0; i < shown; ++i)
        indexes[i] = (2 * i + 1) * capturedPixels / (2 * shown);
    return indexes;
}

} // namespace

QImage shownFrame(const uint8_t *frame, QSize size)
{
    const QSize fitting =
        QSize(wire::FrameWidth, wire::FrameHeight).scaled(size, Qt::KeepAspectRatio);
    const std::vector<size_t> columns = nearest(fitting.width(), wire::FrameWidth);
    const std::vector<size_t> rows = nearest(fitting.height(), wire::FrameHeight);
    QImage image(fitting, QImage::Format_RGB32);
    int line = 0;
    for (const size_t row : rows) {
        const uint8_t *greys = frame + row * wire::FrameWidth;
        auto *pixel = reinterpret_cast<QRgb *>(image.scanLine(line++));
        for (const size_t column : columns)
            *pixel++ = qRgb(greys[column], greys[column], greys[column]);
    }
    return image;
}
