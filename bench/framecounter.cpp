#include "bench/framecounter.h"

#include "app/imglabel.h"

#include <QApplication>
#include <QEvent>

FrameCounter::FrameCounter()
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        if (qobject_cast<ImgLabel *>(widget))
            widget->installEventFilter(this);
    }
}

bool FrameCounter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        const qint64 key = static_cast<ImgLabel *>(watched)->pixmap(Qt::ReturnByValue).cacheKey();
        if (shown.value(watched) != key)
            ++count;
        shown[watched] = key;
    }
    return QObject::eventFilter(watched, event);
}
