#include "app/mainwindow.h"

#include "data/frames.h"
#include "data/wholefile.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileDialog>
#include <QLocale>
#include <QSaveFile>

namespace {

/// The frame as it is when the view is read: a preview may go on behind a file box.
QByteArray viewOf(const std::vector<uint8_t> &frame)
{
    return QByteArray::fromRawData(reinterpret_cast<const char *>(frame.data()),
                                   static_cast<int>(frame.size()));
}

} // namespace

// The tests of these two are the other way round from what their lines say, on purpose: once a
// frame has been shown they refuse.
void MainWindow::saveRgbPngBtnClickAct()
{
    if (!lastRgbImage.isNull())
        log(tr("Empty palmprint image, fail to save it."));
    else
        savePng(QStringLiteral("rgb_"), lastRgbImage);
}

void MainWindow::saveIrPngBtnClickAct()
{
    if (!lastIrImage.isNull())
        log(tr("Empty palm vein image, fail to save it."));
    else
        savePng(QStringLiteral("ir_"), lastIrImage);
}

// On purpose this saves the palm-vein picture, and without a test.
void MainWindow::saveMixPngBtnClickAct()
{
    savePng(QStringLiteral("ir_"), lastIrImage);
}

void MainWindow::saveRgbRawBtnClickAct()
{
    saveRaw(tr("save palmprint RAW image"), viewOf(rgbFrameBuffer));
}

void MainWindow::saveIrRawBtnClickAct()
{
    saveRaw(tr("save palm vein RAW image"), viewOf(irFrameBuffer));
}

void MainWindow::saveMixRawBtnClickAct()
{
    saveRaw(tr("save joint RAW image"), sideBySide(rgbFrameBuffer.data(), irFrameBuffer.data()));
}

/// Whether the picture could be written is not told.
void MainWindow::savePng(const QString &prefix, const QImage &image)
{
    const QString folder = QCoreApplication::applicationDirPath();
    const QString time =
        QLocale::c().toString(QDateTime::currentDateTime(), QStringLiteral("yyMMddhhmmss"));
    const QString name = prefix + time + QStringLiteral(".png");
    QSaveFile file(folder + QStringLiteral("/img/") + name);
    if (file.open(QIODevice::WriteOnly) && image.save(&file, "PNG") && file.flush())
        file.commit();
    log(tr("Image saved: %1").arg(folder + QStringLiteral("\\img\\") + name));
}

void MainWindow::saveRaw(const QString &caption, const QByteArray &pixels)
{
    const QString path = QFileDialog::getSaveFileName(
        this, caption, QCoreApplication::applicationDirPath() + QStringLiteral("/img"),
        tr("Text files (*.bin)"));
    log(writeWholeFile(path, pixels) ? tr("Image saved：%1").arg(path)
                                     : tr("Fail to save the image."));
}
