#pragma once

#include "app/framerate.h"

#include <QCoreApplication>
#include <QImage>
#include <QObject>

#include <cstdint>
#include <optional>
#include <vector>

class ImgLabel;

/// One of the terminal's two cameras: the newest frame, and the label that shows it. The label's
/// tooltip is brought up to date each time it is requested.
class Camera : public QObject
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow) // the texts are in the context of the window

public:
    /// The label belongs to the widget whose layout it is put into.
    explicit Camera(const char *labelName);

    /// The newest frame received, wire::FrameSize bytes; black before the first one.
    uint8_t *frame() { return buffer.data(); }
    const uint8_t *frame() const { return buffer.data(); }
    /// A copy of the last frame shown; null before the first one.
    const QImage &lastImage() const { return image; }
    ImgLabel *label() const { return pictureLabel; }

    void showFrame();
    /// The grey value of the newest frame at a point of the label. Returns nothing outside the
    /// frame and before the first one.
    std::optional<uint8_t> greyAt(QPoint position) const;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QString toolTip();

    std::vector<uint8_t> buffer;
    QImage image;
    FrameRate rate;
    ImgLabel *pictureLabel;
};
