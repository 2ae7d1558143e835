#include "app/imglabel.h"

#include <QMouseEvent>

ImgLabel::ImgLabel(QWidget *parent)
    : QLabel(parent)
{
    setCursor(Qt::CrossCursor);
    setAttribute(Qt::WA_MouseTracking);
    setAttribute(Qt::WA_OpaquePaintEvent); // the picture covers it
}

void ImgLabel::mouseMoveEvent(QMouseEvent *event)
{
    emit mouseMoved(event->pos());
}

void ImgLabel::mousePressEvent(QMouseEvent *event)
{
    emit mousePressed(event->pos());
}
