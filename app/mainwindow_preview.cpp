#include "app/mainwindow.h"

#include "app/imglabel.h"
#include "app/shownframe.h"
#include "link/cmdclient.h"
#include "widgets/controls.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QTimer>

#include <algorithm>

namespace {

constexpr QSize ControlButtonSize(150, 36);
constexpr int ControlGroupWidth = 480;
constexpr int ControlColumns = 3;

constexpr int FrameInterval = 10;       // ms
constexpr int PalmHeightInterval = 100; // ms

} // namespace

const MainWindow::Collector MainWindow::collectors[] = {
    {Palmprint, FrameInterval, &MainWindow::showRgbBtn, QT_TR_NOOP("Palmprint Preview"),
     QT_TR_NOOP("Stop Collecting"), &MainWindow::collectPalmprint,
     QT_TR_NOOP("Palmprint image acquisition failed.")},
    {PalmVein, FrameInterval, &MainWindow::showIrBtn, QT_TR_NOOP("Palm Vein Preview"),
     QT_TR_NOOP("Stop Collecting"), &MainWindow::collectPalmVein,
     QT_TR_NOOP("Palm vein image acquisition failed.")},
    {Joint, FrameInterval, &MainWindow::showMixBtn, QT_TR_NOOP("Joint Preview"),
     QT_TR_NOOP("Stop Collecting"), &MainWindow::collectJoint,
     QT_TR_NOOP("Image acquisition failed.")},
    {PalmHeight, PalmHeightInterval, &MainWindow::getTofDistBtn, QT_TR_NOOP("Get Palm Height"),
     QT_TR_NOOP("stop collecting"), &MainWindow::collectPalmHeight,
     QT_TR_NOOP("Image acquisition failed.")},
};

QGroupBox *MainWindow::createVideoPanel()
{
    pixelReadoutLabel = new QLabel(tr("Pix(X, Y): value"));
    pixelReadoutLabel->setObjectName(QStringLiteral("pixelReadoutLabel"));

    rgbImgLabel = createImgLabel("rgbImgLabel", &rgbPixmap);
    connect(rgbImgLabel, SIGNAL(mouseMoved(QPoint)), this, SLOT(rgbImgLabelMouseMoved(QPoint)));
    connect(rgbImgLabel, SIGNAL(mousePressed(QPoint)), this, SLOT(rgbImgLabelMousePressed(QPoint)));
    irImgLabel = createImgLabel("irImgLabel", &irPixmap);
    connect(irImgLabel, SIGNAL(mouseMoved(QPoint)), this, SLOT(irImgLabelMouseMoved(QPoint)));
    connect(irImgLabel, SIGNAL(mousePressed(QPoint)), this, SLOT(irImgLabelMousePressed(QPoint)));

    auto *columns = new QHBoxLayout;
    columns->addStretch(1);
    columns->addLayout(createCameraColumn(tr("Palmprint"), rgbImgLabel));
    columns->addStretch(2);
    columns->addLayout(createCameraColumn(tr("Palm Vein"), irImgLabel));
    columns->addStretch(1);

    auto *panel = new QGroupBox;
    auto *layout = new QVBoxLayout(panel);
    layout->setContentsMargins({}); // the stretches keep it off the frame where there is room
    layout->addStretch();
    layout->addLayout(columns);
    layout->addWidget(pixelReadoutLabel, 0, Qt::AlignHCenter);
    layout->addStretch();
    return panel;
}

ImgLabel *MainWindow::createImgLabel(const char *name, QPixmap *pixmap)
{
    auto *label = controls::sized(new ImgLabel, ShownFrameSize);
    label->setObjectName(QLatin1String(name));
    label->installEventFilter(this);
    label->setScaledContents(true);
    label->setMargin(0);
    pixmap->fill(Qt::lightGray);
    label->setPixmap(pixmap->copy({{}, ShownFrameSize})); // all one grey, and nothing to scale
    return label;
}

QLayout *MainWindow::createCameraColumn(const QString &caption, ImgLabel *label)
{
    auto *column = new QVBoxLayout;
    label->setAccessibleName(caption);
    column->addWidget(new QLabel(caption), 0, Qt::AlignHCenter);
    column->addWidget(label);
    return column;
}

QGroupBox *MainWindow::createVideoControlGroup()
{
    auto *group = new QGroupBox(tr("Video Control"));
    group->setFixedWidth(ControlGroupWidth);
    group->setLayout(createButtonGrid(
        {
            {findCollector(Palmprint)->idleText, SLOT(showRgbBtnClickAct()),
             &MainWindow::showRgbBtn},
            {findCollector(PalmVein)->idleText, SLOT(showIrBtnClickAct()), &MainWindow::showIrBtn},
            {findCollector(Joint)->idleText, SLOT(showMixBtnClickAct()), &MainWindow::showMixBtn},
            {QT_TR_NOOP("Save Palmprint PNG"), SLOT(saveRgbPngBtnClickAct())},
            {QT_TR_NOOP("Save Palm Vein PNG"), SLOT(saveIrPngBtnClickAct())},
            {QT_TR_NOOP("Save Joint PNG"), SLOT(saveMixPngBtnClickAct())},
            {QT_TR_NOOP("Save Palmprint RAW"), SLOT(saveRgbRawBtnClickAct())},
            {QT_TR_NOOP("Save Palm Vein RAW"), SLOT(saveIrRawBtnClickAct())},
            {QT_TR_NOOP("Save Joint RAW"), SLOT(saveMixRawBtnClickAct())},
        },
        ControlColumns, ControlButtonSize));
    return group;
}

void MainWindow::showRgbBtnClickAct()
{
    toggleCollecting(Palmprint);
}

void MainWindow::showIrBtnClickAct()
{
    toggleCollecting(PalmVein);
}

void MainWindow::showMixBtnClickAct()
{
    toggleCollecting(Joint);
}

void MainWindow::getTofDistBtnClickAct()
{
    toggleCollecting(PalmHeight);
}

const MainWindow::Collector *MainWindow::findCollector(int32_t state)
{
    for (const Collector &collector : collectors) {
        if (collector.state == state)
            return &collector;
    }
    return nullptr;
}

void MainWindow::toggleCollecting(ImgUpdateState state)
{
    const Collector &collector = *findCollector(state);
    QPushButton *button = this->*collector.button;
    if (button->text() != tr(collector.idleText)) {
        stopCollecting();
        controls::setCaption(button, tr(collector.idleText));
        return;
    }
    startCollecting(collector, tr(collector.runningText));
}

void MainWindow::startCollecting(const Collector &collector, const QString &caption)
{
    imgUpdateState = collector.state;
    controls::setCaption(this->*collector.button, caption);
    setImgUpdateState();
    updateTimer->start(collector.interval);
}

void MainWindow::stopCollecting()
{
    updateTimer->stop();
    imgUpdateState = Idle;
    setImgUpdateState();
}

int32_t MainWindow::setImgUpdateState()
{
    if (imgUpdateState != Idle && !findCollector(imgUpdateState))
        return 0;
    for (const Collector &collector : collectors) {
        const bool usable = imgUpdateState == Idle || imgUpdateState == collector.state;
        (this->*collector.button)->setEnabled(usable);
    }
    return 0;
}

void MainWindow::update_task()
{
    // A command is waiting for its reply: this tick must not take that reply for its own.
    if (client->isWaiting()) {
        updateTimer->start();
        return;
    }
    if (imgUpdateState == Idle) {
        stopCollecting();
        return;
    }
    const Collector *collector = findCollector(imgUpdateState);
    if (!collector)
        return;
    if ((this->*collector->collect)()) {
        updateTimer->start(collector->interval);
    } else {
        log(tr(collector->failureText));
        stopCollecting();
    }
}

bool MainWindow::collectPalmprint()
{
    if (!client->getPalmprintImage(rgbFrameBuffer.data()))
        return false;
    showPalmprint();
    return true;
}

bool MainWindow::collectPalmVein()
{
    if (!client->getPalmVeinImage(irFrameBuffer.data()))
        return false;
    showPalmVein();
    return true;
}

bool MainWindow::collectJoint()
{
    if (!client->getDualImages(rgbFrameBuffer.data(), irFrameBuffer.data()))
        return false;
    showPalmVein();
    showPalmprint();
    return true;
}

bool MainWindow::collectPalmHeight()
{
    uint16_t distance = 0;
    if (!client->getTofDistance(&distance))
        return false;
    log(tr("TOF: %1").arg(distance));
    return true;
}

void MainWindow::showPalmprint()
{
    rgbRate.count();
    showFrame(rgbFrameBuffer, &lastRgbImage, &rgbPixmap, rgbImgLabel);
}

void MainWindow::showPalmVein()
{
    irRate.count();
    showFrame(irFrameBuffer, &lastIrImage, &irPixmap, irImgLabel);
}

void MainWindow::showFrame(const std::vector<uint8_t> &frame, QImage *lastImage, QPixmap *pixmap,
                           ImgLabel *label)
{
    if (lastImage->isNull())
        *lastImage = QImage(wire::FrameWidth, wire::FrameHeight, QImage::Format_Grayscale8);
    static_assert(wire::FrameWidth % 4 == 0, "rows without padding");
    std::copy(frame.begin(), frame.end(), lastImage->bits());
    // Where a pixel of the window is more than one of the screen, the label takes from all there
    // is.
    *pixmap =
        QPixmap::fromImage(label->devicePixelRatioF() > 1 ? *lastImage : shownFrame(frame.data()));
    label->setPixmap(*pixmap);
}

void MainWindow::rgbImgLabelMouseMoved(QPoint position)
{
    showPixel(position, lastRgbImage, rgbFrameBuffer);
}

void MainWindow::irImgLabelMouseMoved(QPoint position)
{
    showPixel(position, lastIrImage, irFrameBuffer);
}

void MainWindow::showPixel(QPoint position, const QImage &lastImage,
                           const std::vector<uint8_t> &frame)
{
    // Of the one and a half pixels behind an odd coordinate the scaled picture shows the next one.
    const int column = 3 * position.x() / 2;
    const int row = 3 * position.y() / 2;
    const QRect frameRect(0, 0, wire::FrameWidth, wire::FrameHeight);
    if (lastImage.isNull() || !frameRect.contains(column, row))
        return;
    const size_t index = static_cast<size_t>(row) * wire::FrameWidth + static_cast<size_t>(column);
    pixelReadoutLabel->setText(
        tr("Pt[%1, %2]: %3").arg(position.x()).arg(position.y()).arg(frame[index]));
}

void MainWindow::rgbImgLabelMousePressed(QPoint /*position*/) {}

void MainWindow::irImgLabelMousePressed(QPoint /*position*/) {}
