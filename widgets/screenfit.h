#pragma once

#include <QEvent>
#include <QList>
#include <QObject>
#include <QPair>
#include <QSize>

class QLayout;
class QScrollArea;
class QWidget;

/// Keeps a window of fixed size usable on a smaller screen: the window shrinks as far as its layout
/// permits, and if that is not enough, its content scrolls and the mouse wheel no longer changes
/// values. A window that fits is left as it is. Belongs to its window.
class ScreenFit : public QObject
{
    Q_OBJECT

public:
    explicit ScreenFit(QWidget *window);

    /// Allows a widget of fixed height to shrink to this height when the window does not fit.
    void letShrink(QWidget *widget, int minHeight) { shrinkable.append({widget, minHeight}); }

    /// Fits the window, without its frame, into this size.
    void fitInto(QSize room);

    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void fitScreen();
    void fitChangedScreen();
    void fitContent();
    void showFocused();

private:
    void watchWindow(QEvent::Type event);
    void makeScrollable();
    void moveIntoScreen();
    void shrink(bool needed);
    /// Returns null if the content has no layout.
    QLayout *contentLayout() const;

    QWidget *window;
    QScrollArea *area = nullptr;             ///< around the content once it has to scroll
    QList<QPair<QWidget *, int>> shrinkable; ///< widgets and their minimum heights
    QSize fullSize;                          ///< size on a large screen; invalid until known
    bool isScrolling = false;
};
