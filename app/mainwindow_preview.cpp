#include "app/mainwindow.h"

#include "app/imglabel.h"
#include "widgets/controls.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QGroupBox>

namespace {

constexpr QSize ControlButtonSize(150, 36);
constexpr int ControlGroupWidth = 480;
constexpr int ControlColumns = 3;

} // namespace

QGroupBox *MainWindow::createVideoPanel()
{
    ImgLabel *rgbImgLabel = preview.palmprint.label();
    connect(rgbImgLabel, SIGNAL(mouseMoved(QPoint)), this, SLOT(rgbImgLabelMouseMoved(QPoint)));
    connect(rgbImgLabel, SIGNAL(mousePressed(QPoint)), this, SLOT(rgbImgLabelMousePressed(QPoint)));
    ImgLabel *irImgLabel = preview.palmVein.label();
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
    layout->setContentsMargins({}); // on a large screen the stretches serve as margins
    layout->addStretch();
    layout->addLayout(columns);
    layout->addWidget(preview.readoutLabel(), 0, Qt::AlignHCenter);
    layout->addStretch();
    return panel;
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
    group->setLayout(
        controls::buttonGrid({{tr("Palmprint Preview"), SLOT(showRgbBtnClickAct())},
                              {tr("Palm Vein Preview"), SLOT(showIrBtnClickAct())},
                              {tr("Joint Preview"), SLOT(showMixBtnClickAct())},
                              {tr("Save Palmprint PNG"), SLOT(saveRgbPngBtnClickAct())},
                              {tr("Save Palm Vein PNG"), SLOT(saveIrPngBtnClickAct())},
                              {tr("Save Joint PNG"), SLOT(saveMixPngBtnClickAct())},
                              {tr("Save Palmprint RAW"), SLOT(saveRgbRawBtnClickAct())},
                              {tr("Save Palm Vein RAW"), SLOT(saveIrRawBtnClickAct())},
                              {tr("Save Joint RAW"), SLOT(saveMixRawBtnClickAct())}},
                             ControlColumns, ControlButtonSize, this));
    return group;
}

void MainWindow::showRgbBtnClickAct()
{
    preview.toggle(LivePreview::Palmprint);
}

void MainWindow::showIrBtnClickAct()
{
    preview.toggle(LivePreview::PalmVein);
}

void MainWindow::showMixBtnClickAct()
{
    preview.toggle(LivePreview::Joint);
}

void MainWindow::getTofDistBtnClickAct()
{
    preview.toggle(LivePreview::PalmHeight);
}

int32_t MainWindow::setImgUpdateState()
{
    preview.enableButtons();
    return 0;
}

void MainWindow::update_task()
{
    preview.tick();
}

void MainWindow::rgbImgLabelMouseMoved(QPoint position)
{
    preview.showPixel(preview.palmprint, position);
}

void MainWindow::irImgLabelMouseMoved(QPoint position)
{
    preview.showPixel(preview.palmVein, position);
}

void MainWindow::rgbImgLabelMousePressed(QPoint /*position*/) {}

void MainWindow::irImgLabelMousePressed(QPoint /*position*/) {}
