#include "app/imglabel.h"

#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr int LongStep = 10; // pixels
constexpr int CrossArm = 6;
constexpr int FrameWidth = 3;

QPoint direction(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}

} // namespace

ImgLabel::ImgLabel(QWidget *parent)
    : QLabel(parent)
{
    setCursor(Qt::CrossCursor);
    setAttribute(Qt::WA_MouseTracking);
    setAttribute(Qt::WA_OpaquePaintEvent); // the picture covers the whole label
    setFocusPolicy(Qt::TabFocus);
}

void ImgLabel::mouseMoveEvent(QMouseEvent *event)
{
    moveTo(event->pos());
}

void ImgLabel::mousePressEvent(QMouseEvent *event)
{
    emit mousePressed(event->pos());
}

void ImgLabel::keyPressEvent(QKeyEvent *event)
{
    const QPoint step = direction(event->key());
    if (step.isNull()) {
        QLabel::keyPressEvent(event);
        return;
    }
    const QPoint next = point + (event->modifiers() & Qt::ControlModifier ? LongStep : 1) * step;
    moveTo({qBound(0, next.x(), width() - 1), qBound(0, next.y(), height() - 1)});
}

void ImgLabel::moveTo(QPoint position)
{
    point = position;
    if (hasFocus())
        update();
    emit mouseMoved(position);
}

void ImgLabel::paintEvent(QPaintEvent *event)
{
    QLabel::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    painter.setPen(QPen(palette().highlight(), FrameWidth));
    painter.drawRect(rect().adjusted(1, 1, -FrameWidth + 1, -FrameWidth + 1));
    painter.setPen(Qt::white);
    painter.setCompositionMode(
        QPainter::CompositionMode_Difference); // visible on all greys but one
    painter.drawLine(point - QPoint(CrossArm, 0), point + QPoint(CrossArm, 0));
    painter.drawLine(point - QPoint(0, CrossArm), point + QPoint(0, CrossArm));
}
