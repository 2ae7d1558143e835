#include "app/mainwindow.h"

#include "app/imglabel.h"
#include "link/cmdclient.h"

#include <QEvent>
#include <QPushButton>

namespace {

constexpr double Mega = 1e6;
constexpr double MicrosecondsPerMillisecond = 1000;

/// By QAbstractSocket::SocketState.
constexpr const char *SocketStates[] = {
    QT_TRANSLATE_NOOP("MainWindow", "not connected"),
    QT_TRANSLATE_NOOP("MainWindow", "looking up the address"),
    QT_TRANSLATE_NOOP("MainWindow", "connecting"),
    QT_TRANSLATE_NOOP("MainWindow", "connected"),
    QT_TRANSLATE_NOOP("MainWindow", "bound to an address"),
    QT_TRANSLATE_NOOP("MainWindow", "listening"),
    QT_TRANSLATE_NOOP("MainWindow", "closing"),
};

} // namespace

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        if (watched == openBtn)
            openBtn->setToolTip(connectionTip());
        else if (watched == rgbImgLabel)
            rgbImgLabel->setToolTip(pictureTip(&rgbRate));
        else if (watched == irImgLabel)
            irImgLabel->setToolTip(pictureTip(&irRate));
    }
    return QMainWindow::eventFilter(watched, event);
}

QString MainWindow::connectionTip() const
{
    const qint64 time = client->lastReplyTime();
    const QString reply =
        time < 0
            ? tr("none yet")
            : tr("%1 ms").arg(static_cast<double>(time) / MicrosecondsPerMillisecond, 0, 'f', 1);
    return tr("Socket: %1\nLast reply: %2").arg(tr(SocketStates[client->socketState()]), reply);
}

QString MainWindow::pictureTip(FrameRate *rate)
{
    const int frames = rate->lastSecond();
    return tr("%1 × %2 pixels\n%3 frames/s\n%4 MB/s")
        .arg(wire::FrameWidth)
        .arg(wire::FrameHeight)
        .arg(frames)
        .arg(frames * static_cast<double>(wire::FrameSize) / Mega, 0, 'f', 1);
}
