#pragma once

#include <QObject>
#include <QSize>

class QWidget;

/// Keeps a window of fixed size usable on a screen that is smaller: there it is made to fit, and
/// its content scrolls; the mouse's wheel then changes no values. Nothing changes where it fits.
/// Belongs to its window.
class ScreenFit : public QObject
{
    Q_OBJECT

public:
    explicit ScreenFit(QWidget *window);

    /// What it does on a screen with so much room for a window without its frame.
    void fitInto(QSize room);

    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void fitScreen();
    void fitChangedScreen();
    void showFocused();

private:
    void makeScrollable();
    void moveIntoScreen();

    QWidget *window;
    QSize fullSize; ///< invalid until the content scrolls
};
