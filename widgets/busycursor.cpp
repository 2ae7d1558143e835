#include "widgets/busycursor.h"

#include <QCursor>
#include <QGuiApplication>

namespace {

constexpr qint64 LongWait = 200; // ms

} // namespace

BusyCursor::~BusyCursor()
{
    if (shown)
        QGuiApplication::restoreOverrideCursor();
}

void BusyCursor::showIfLong()
{
    if (timer.elapsed() >= LongWait)
        show();
}

void BusyCursor::show()
{
    if (!shown)
        QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    shown = true;
}
