#pragma once

#include <QLabel>

/// A picture that tells where the mouse is over it, in its own coordinates; moves are told without
/// a pressed button too. While it has the keyboard's focus it shows that point, and the arrow keys
/// move it by a pixel, with Ctrl by ten.
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
