#include "app/livepreview.h"

#include "link/cmdclient.h"
#include "widgets/controls.h"
#include "widgets/textlog.h"

#include <QTimer>

namespace {

constexpr int FrameInterval = 10;       // ms
constexpr int PalmHeightInterval = 100; // ms

} // namespace

const LivePreview::Collector LivePreview::collectors[SourceCount] = {
    {"showRgbBtnClickAct", FrameInterval, QT_TR_NOOP("Stop Collecting"),
     &LivePreview::collectPalmprint, QT_TR_NOOP("Palmprint image acquisition failed.")},
    {"showIrBtnClickAct", FrameInterval, QT_TR_NOOP("Stop Collecting"),
     &LivePreview::collectPalmVein, QT_TR_NOOP("Palm vein image acquisition failed.")},
    {"showMixBtnClickAct", FrameInterval, QT_TR_NOOP("Stop Collecting"), &LivePreview::collectJoint,
     QT_TR_NOOP("Image acquisition failed.")},
    {"getTofDistBtnClickAct", PalmHeightInterval, QT_TR_NOOP("stop collecting"),
     &LivePreview::collectPalmHeight, QT_TR_NOOP("Image acquisition failed.")},
};

LivePreview::LivePreview(CmdClient *cmdClient, QTextEdit *infoText, QObject *window)
    : client(cmdClient),
      log(infoText),
      timer(new QTimer(window)),
      readout(new QLabel(tr("Pix(X, Y): value")))
{
    readout->setObjectName(QStringLiteral("pixelReadoutLabel"));
    QObject::connect(timer, SIGNAL(timeout()), window, SLOT(update_task()));
}

void LivePreview::setButtons(const QWidget *window)
{
    for (int i = 0; i < SourceCount; ++i) {
        buttons[i] = window->findChild<QPushButton *>(QLatin1String(collectors[i].buttonName));
        captions[i] = {buttons[i]->text(), tr(collectors[i].runningText)};
    }
}

void LivePreview::toggle(Source source)
{
    toggle(source, captions[source]);
}

void LivePreview::toggle(Source source, const Captions &shown)
{
    if (buttons[source]->text() == shown.idle) {
        start(source, shown.running);
        return;
    }
    stop();
    controls::setCaption(buttons[source], shown.idle);
}

void LivePreview::start(Source source, const QString &caption)
{
    running = &collectors[source];
    controls::setCaption(buttons[source], caption);
    enableButtons();
    timer->start(running->interval);
}

void LivePreview::stop()
{
    timer->stop();
    running = nullptr;
    enableButtons();
}

void LivePreview::enableButtons() const
{
    for (int i = 0; i < SourceCount; ++i)
        buttons[i]->setEnabled(!running || running == &collectors[i]);
}

void LivePreview::tick()
{
    // While a command waits for its reply, this tick must not receive that reply in its place.
    if (client->isWaiting()) {
        timer->start();
        return;
    }
    if (!running) {
        stop();
        return;
    }
    const Collector &collector = *running;
    if ((this->*collector.collect)()) {
        timer->start(collector.interval);
    } else {
        textlog::append(log, tr(collector.failureText));
        stop();
    }
}

bool LivePreview::collectPalmprint()
{
    if (!client->getPalmprintImage(palmprint.frame()))
        return false;
    palmprint.showFrame();
    return true;
}

bool LivePreview::collectPalmVein()
{
    if (!client->getPalmVeinImage(palmVein.frame()))
        return false;
    palmVein.showFrame();
    return true;
}

bool LivePreview::collectJoint()
{
    if (!client->getDualImages(palmprint.frame(), palmVein.frame()))
        return false;
    palmVein.showFrame();
    palmprint.showFrame();
    return true;
}

bool LivePreview::collectPalmHeight()
{
    uint16_t distance = 0;
    if (!client->getTofDistance(&distance))
        return false;
    textlog::append(log, tr("TOF: %1").arg(distance));
    return true;
}

void LivePreview::showPixel(const Camera &camera, QPoint position)
{
    if (const std::optional<uint8_t> grey = camera.greyAt(position))
        readout->setText(tr("Pt[%1, %2]: %3").arg(position.x()).arg(position.y()).arg(*grey));
}
