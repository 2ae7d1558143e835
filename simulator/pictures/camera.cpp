#include "simulator/pictures/camera.h"

#include "link/wire.h"

#include <QImage>

#include <cmath>
#include <cstring>

static void initResource()
{
    Q_INIT_RESOURCE(pictures); // works outside of a namespace only
}

namespace sim {
namespace {

constexpr int Margin = 40; // pixels by which the pictures are larger than a frame on every side
constexpr double DriftReach = 0.9 * Margin;
constexpr double SwayPeriod = 7300;  // ms
constexpr double LiftPeriod = 11100; // ms

// Cells of the picture with the mark: ten digits, then the word.
constexpr int CellWidth = 12;
constexpr int CellHeight = 22;
constexpr int NumberCells = 6;
constexpr int WordCells = 10;

QImage load(const char *name)
{
    initResource();
    return QImage(QStringLiteral(":/simulator/%1.png").arg(name))
        .convertToFormat(QImage::Format_Grayscale8);
}

/// Position within the margin.
int drift(qint64 milliseconds, double period)
{
    const double turns = static_cast<double>(milliseconds) / period;
    return Margin + static_cast<int>(std::lround(DriftReach * std::sin(6.2831853 * turns)));
}

void copyPart(const QImage &picture, QPoint from, QSize size, quint8 *to)
{
    for (int y = from.y(); y < from.y() + size.height(); ++y, to += wire::FrameWidth)
        std::memcpy(to, picture.constScanLine(y) + from.x(), static_cast<size_t>(size.width()));
}

void takeFrame(const QImage &picture, QPoint from, quint32 number, quint8 *frame)
{
    static const QImage mark = load("mark");
    copyPart(picture, from, {wire::FrameWidth, wire::FrameHeight}, frame);
    quint8 *cell = frame + ptrdiff_t{wire::FrameHeight - CellHeight} * wire::FrameWidth;
    copyPart(mark, {10 * CellWidth, 0}, {WordCells * CellWidth, CellHeight}, cell);
    cell += ptrdiff_t{WordCells + NumberCells} * CellWidth;
    for (int i = 0; i < NumberCells; ++i, number /= 10)
        copyPart(mark, {static_cast<int>(number % 10) * CellWidth, 0}, {CellWidth, CellHeight},
                 cell -= CellWidth);
}

} // namespace

Cameras::Cameras(quint32 seed)
    : start(qint64{seed} * 997)
{
    clock.start();
}

void Cameras::capture(quint8 *palmprint, quint8 *vein)
{
    // Loaded at the first capture and shared by all terminals of a program.
    static const QImage hands[] = {load("palmprint"), load("vein")};
    const qint64 now = start + clock.elapsed();
    const QPoint from(drift(now, SwayPeriod), drift(now, LiftPeriod));
    ++frames;
    if (palmprint)
        takeFrame(hands[0], from, frames, palmprint);
    if (vein)
        takeFrame(hands[1], from, frames, vein);
}

} // namespace sim
