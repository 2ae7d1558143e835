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

/// Returns the size of the window manager's frame, or an estimate until the frame is known.
QSize frameOf(const QWidget *window)
{
    const QSize frame = window->frameSize() - window->size();
    if (!frame.isNull())
        return frame; // the width may be 0
    const int border = window->style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
    return {2 * border, window->style()->pixelMetric(QStyle::PM_TitleBarHeight) + border};
}

/// Qt's platforms without a display report a screen all the same.
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

/// Moves the widgets that are in no layout.
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
        event->ignore(); // so that the scroll area gets it
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void ScreenFit::watchWindow(QEvent::Type event)
{
    switch (event) {
    case QEvent::Show:
    case QEvent::WindowActivate: // the frame is known now
        fitScreen();
        break;
    case QEvent::FontChange:
    case QEvent::StyleChange: // the controls change after this event
        QMetaObject::invokeMethod(this, "fitContent", Qt::QueuedConnection);
        break;
    default:
        break;
    }
}

/// Only for the main window: dialogs are closed before the font changes, and only the main window
/// has the size of its content.
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
        return; // all screens are switched off
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

/// After a change of the screen moves the window back onto it. A window that the operator has moved
/// partly off the screen stays there otherwise.
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
    for (const auto &[widget, minHeight] : qAsConst(shrinkable)) {
        widget->setMinimumHeight(needed ? minHeight : widget->maximumHeight());
        // Otherwise the surrounding layouts would be updated by later events only.
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
    const QSize minSize = layout ? layout->totalMinimumSize().boundedTo(fullSize) : fullSize;
    const QSize fitting = fullSize.boundedTo(room);
    isScrolling = fitting.expandedTo(minSize) != fitting;
    if (isScrolling && !area)
        makeScrollable();
    if (area)
        area->widget()->setMinimumSize(minSize);
    // A scrolling dialog needs room for the scroll bars; the main window takes the whole screen.
    const int bar = window->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const QSize maxSize = window->parentWidget() ? fullSize + QSize(bar, bar) : room;
    window->setFixedSize(isScrolling ? maxSize.boundedTo(room) : fitting);
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
    // Wheel events scroll the page and never change a value under the pointer.
    for (QWidget *widget : area->widget()->findChildren<QWidget *>()) {
        if (changesByWheel(widget))
            widget->installEventFilter(this);
    }
    if (focused)
        focused->setFocus();
    QMetaObject::invokeMethod(this, "showFocused", Qt::QueuedConnection); // after the layout
}

void ScreenFit::showFocused()
{
    if (window->focusWidget())
        area->ensureWidgetVisible(window->focusWidget());
}
