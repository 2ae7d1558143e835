#include "app/camera.h"

#include "app/imglabel.h"
#include "app/shownframe.h"
#include "widgets/controls.h"

#include <QEvent>

#include <algorithm>

namespace {

constexpr double Mega = 1e6;

} // namespace

Camera::Camera(const char *labelName)
    : buffer(wire::FrameSize),
      pictureLabel(controls::field(new ImgLabel, labelName, ShownFrameSize))
{
    QPixmap empty(ShownFrameSize);
    empty.fill(Qt::lightGray);
    pictureLabel->setPixmap(empty);
    pictureLabel->setScaledContents(true);
    pictureLabel->setMargin(0);
    pictureLabel->installEventFilter(this);
}

void Camera::showFrame()
{
    rate.count();
    if (image.isNull())
        image = QImage(wire::FrameWidth, wire::FrameHeight, QImage::Format_Grayscale8);
    static_assert(wire::FrameWidth % 4 == 0, "rows without padding");
    std::copy(buffer.begin(), buffer.end(), image.bits());
    // On a screen of high resolution the label itself scales the whole frame.
    const bool wholeFrame = pictureLabel->devicePixelRatioF() > 1;
    pictureLabel->setPixmap(QPixmap::fromImage(wholeFrame ? image : shownFrame(buffer.data())));
}

std::optional<uint8_t> Camera::greyAt(QPoint position) const
{
    // One pixel of the label stands for one and a half of the frame. At an odd coordinate the label
    // shows the next pixel, not the one that is read here.
    const int column = 3 * position.x() / 2;
    const int row = 3 * position.y() / 2;
    const QRect frameRect(0, 0, wire::FrameWidth, wire::FrameHeight);
    if (image.isNull() || !frameRect.contains(column, row))
        return std::nullopt;
    return buffer[static_cast<size_t>(row) * wire::FrameWidth + static_cast<size_t>(column)];
}

bool Camera::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ToolTip)
        pictureLabel->setToolTip(toolTip());
    return QObject::eventFilter(watched, event);
}

QString Camera::toolTip()
{
    const int frames = rate.lastSecond();
    return tr("%1 × %2 pixels\n%3 frames/s\n%4 MB/s")
        .arg(wire::FrameWidth)
        .arg(wire::FrameHeight)
        .arg(frames)
        .arg(frames * static_cast<double>(wire::FrameSize) / Mega, 0, 'f', 1);
}
