#include "widgets/screenfit.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QGuiApplication>
#include <QLayout>
#include <QMainWindow>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>
#include <QWindow>

namespace {

/// What the window manager adds, guessed as long as it has not been seen.
QSize frameOf(const QWidget *window)
{
    const QSize frame = window->frameSize() - window->size();
    if (!frame.isNull())
        return frame; // some have no sides
    const int border = window->style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
    return {2 * border, window->style()->pixelMetric(QStyle::PM_TitleBarHeight) + border};
}

/// Qt's platforms without a display claim one of any size.
bool hasDisplay()
{
    const QString platform = QGuiApplication::platformName();
    return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

bool changesByWheel(const QWidget *widget)
{
    return qobject_cast<const QAbstractSpinBox *>(widget) ||
           qobject_cast<const QComboBox *>(widget);
}

/// Those that no layout holds.
void moveChildren(QWidget *window, QWidget *content, const QWidget *except)
{
    const auto children = window->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *child : children) {
        if (child != except && !child->isWindow())
            child->setParent(content);
    }
}

} // namespace

ScreenFit::ScreenFit(QWidget *fittedWindow)
    : QObject(fittedWindow),
      window(fittedWindow)
{
    window->installEventFilter(this);
}

/// Before a window is shown, and when its frame has become known.
bool ScreenFit::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == window) {
        if (event->type() == QEvent::Polish || event->type() == QEvent::WindowActivate)
            fitScreen();
    } else if (event->type() == QEvent::Wheel && window->size() != fullSize) {
        event->ignore(); // for the area around it
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void ScreenFit::fitScreen()
{
    if (!hasDisplay())
        return;
    const QScreen *screen = window->screen();
    if (!screen)
        return; // all are switched off
    connect(screen, SIGNAL(availableGeometryChanged(QRect)), this, SLOT(fitChangedScreen()),
            Qt::UniqueConnection);
    if (const QWindow *handle = window->windowHandle())
        connect(handle, SIGNAL(screenChanged(QScreen *)), this, SLOT(fitScreen()),
                Qt::UniqueConnection);
    const QSize before = window->size();
    fitInto(screen->availableGeometry().size() - frameOf(window));
    if (window->size() != before && !window->parentWidget())
        moveIntoScreen();
}

/// What the operator has moved out of a screen is left there; what a change of it cuts off is not.
void ScreenFit::fitChangedScreen()
{
    fitScreen();
    if (window->isVisible() && window->screen())
        moveIntoScreen();
}

void ScreenFit::moveIntoScreen()
{
    const QRect available = window->screen()->availableGeometry();
    const QSize size = window->size() + frameOf(window);
    const QPoint last = available.bottomRight() - QPoint(size.width() - 1, size.height() - 1);
    window->move(qMax(available.left(), qMin(window->x(), last.x())),
                 qMax(available.top(), qMin(window->y(), last.y())));
}

void ScreenFit::fitInto(QSize room)
{
    const QSize full = fullSize.isValid() ? fullSize : window->minimumSize();
    const bool fits = full.boundedTo(room) == full;
    if (fits && !fullSize.isValid())
        return;
    if (!fullSize.isValid())
        makeScrollable();
    // A dialog takes no more than it needs: one that is too high has a bar at its side.
    const int bar = window->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const QSize most = window->parentWidget() ? full + QSize(bar, bar) : room;
    window->setFixedSize(fits ? full : most.boundedTo(room));
}

void ScreenFit::makeScrollable()
{
    fullSize = window->minimumSize();
    QWidget *focused = window->focusWidget();
    auto *area = new QScrollArea(window);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    if (auto *mainWindow = qobject_cast<QMainWindow *>(window)) {
        area->setWidget(mainWindow->takeCentralWidget());
        mainWindow->setCentralWidget(area);
    } else {
        auto *content = new QWidget(area->viewport());
        if (window->layout())
            content->setLayout(window->layout());
        moveChildren(window, content, area);
        area->setWidget(content);
        auto *layout = new QVBoxLayout(window);
        layout->setContentsMargins({});
        layout->addWidget(area);
    }
    area->widget()->setMinimumSize(fullSize);
    // Who scrolls means none of the values that come under the pointer.
    for (QWidget *widget : area->widget()->findChildren<QWidget *>()) {
        if (changesByWheel(widget))
            widget->installEventFilter(this);
    }
    if (focused)
        focused->setFocus();
    QMetaObject::invokeMethod(this, "showFocused", Qt::QueuedConnection); // once it is laid out
}

void ScreenFit::showFocused()
{
    if (window->focusWidget())
        window->findChild<QScrollArea *>()->ensureWidgetVisible(window->focusWidget());
}
