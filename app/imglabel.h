#pragma once

#include <QLabel>

/// A picture that reports the mouse position in its own coordinates, also while no button is
/// pressed. While it has the keyboard focus it marks that point with a cross; the arrow keys move
/// the point by one pixel, with Ctrl by ten.
class ImgLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ImgLabel(QWidget *parent = nullptr);

signals:
    void mouseMoved(QPoint position);
    void mousePressed(QPoint position);

protected:
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void moveTo(QPoint position);

    QPoint point;
};
