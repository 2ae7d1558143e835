#pragma once

#include <QEvent>
#include <QList>
#include <QObject>
#include <QPair>
#include <QSize>

class QLayout;
class QScrollArea;
class QWidget;

/// Keeps a window of fixed size usable on a screen that is smaller: it becomes as small as its
/// layout permits, and where that does not do its content scrolls; the mouse's wheel then changes
/// no values. Nothing changes where it fits. Belongs to its window.
class ScreenFit : public QObject
{
    Q_OBJECT

public:
    explicit ScreenFit(QWidget *window);

    /// Lets a widget of fixed height be as low as this where the screen has no room for the window.
    void letShrink(QWidget *widget, int leastHeight) { shrinkable.append({widget, leastHeight}); }

    /// What it does on a screen with so much room for a window without its frame.
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
    /// Null where the content has none.
    QLayout *contentLayout() const;

    QWidget *window;
    QScrollArea *area = nullptr;             ///< around the content, once it has had to scroll
    QList<QPair<QWidget *, int>> shrinkable; ///< widgets and their least heights
    QSize fullSize;                          ///< on a large screen; invalid until it is known
    bool isScrolling = false;
};
