#include "widgets/screenfit.h"

#include "widgets/placement.h"

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

bool ScreenFit::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == window) {
        watchWindow(event->type());
    } else if (event->type() == QEvent::Wheel && isScrolling) {
        event->ignore(); // for the area around it
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void ScreenFit::watchWindow(QEvent::Type event)
{
    switch (event) {
    case QEvent::Show:
    case QEvent::WindowActivate: // the frame has become known
        fitScreen();
        break;
    case QEvent::FontChange:
    case QEvent::StyleChange: // the controls in the window follow
        QMetaObject::invokeMethod(this, "fitContent", Qt::QueuedConnection);
        break;
    default:
        break;
    }
}

/// Only the main window lives long enough to see another font, and has the size of its content.
void ScreenFit::fitContent()
{
    if (!qobject_cast<QMainWindow *>(window))
        return;
    shrink(false);
    fullSize = contentLayout()->totalSizeHint();
    window->setFixedSize(fullSize);
    fitScreen();
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
    const QRect frame(window->pos(), window->size() + frameOf(window));
    window->move(placement::within(frame, window->screen()->availableGeometry()).topLeft());
}

QLayout *ScreenFit::contentLayout() const
{
    if (area)
        return area->widget()->layout();
    const auto *mainWindow = qobject_cast<QMainWindow *>(window);
    return mainWindow ? mainWindow->centralWidget()->layout() : window->layout();
}

void ScreenFit::shrink(bool needed)
{
    for (const auto &[widget, leastHeight] : qAsConst(shrinkable)) {
        widget->setMinimumHeight(needed ? leastHeight : widget->maximumHeight());
        // The layouts around it would learn of that with later events only.
        for (QWidget *outer = widget->parentWidget(); outer; outer = outer->parentWidget()) {
            if (outer->layout())
                outer->layout()->activate();
        }
    }
}

void ScreenFit::fitInto(QSize room)
{
    if (!fullSize.isValid())
        fullSize = window->minimumSize();
    shrink(fullSize.boundedTo(room) != fullSize);
    const QLayout *layout = contentLayout();
    const QSize least = layout ? layout->totalMinimumSize().boundedTo(fullSize) : fullSize;
    const QSize fitting = fullSize.boundedTo(room);
    isScrolling = fitting.expandedTo(least) != fitting;
    if (isScrolling && !area)
        makeScrollable();
    if (area)
        area->widget()->setMinimumSize(least);
    // A dialog takes no more than it needs: one that is too high has a bar at its side.
    const int bar = window->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const QSize most = window->parentWidget() ? fullSize + QSize(bar, bar) : room;
    window->setFixedSize(isScrolling ? most.boundedTo(room) : fitting);
}

void ScreenFit::makeScrollable()
{
    QWidget *focused = window->focusWidget();
    area = new QScrollArea(window);
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
        area->ensureWidgetVisible(window->focusWidget());
}
