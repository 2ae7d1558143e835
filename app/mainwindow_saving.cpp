#include "app/mainwindow.h"

#include "data/frames.h"
#include "data/wholefile.h"
#include "link/wire.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileDialog>
#include <QLocale>
#include <QSaveFile>

namespace {

/// A view of the newest frame, not a copy: a preview may go on while a file box is open.
QByteArray viewOf(const Camera &camera)
{
    return QByteArray::fromRawData(reinterpret_cast<const char *>(camera.frame()),
                                   static_cast<int>(wire::FrameSize));
}

} // namespace

void MainWindow::saveRgbPngBtnClickAct()
{
    savePngUnlessShown(QStringLiteral("rgb_"), preview.palmprint,
                       tr("Empty palmprint image, fail to save it."));
}

void MainWindow::saveIrPngBtnClickAct()
{
    savePngUnlessShown(QStringLiteral("ir_"), preview.palmVein,
                       tr("Empty palm vein image, fail to save it."));
}

// On purpose this saves the palm-vein picture, without a test.
void MainWindow::saveMixPngBtnClickAct()
{
    savePng(QStringLiteral("ir_"), preview.palmVein.lastImage());
}

void MainWindow::saveRgbRawBtnClickAct()
{
    saveRaw(tr("save palmprint RAW image"), viewOf(preview.palmprint));
}

void MainWindow::saveIrRawBtnClickAct()
{
    saveRaw(tr("save palm vein RAW image"), viewOf(preview.palmVein));
}

void MainWindow::saveMixRawBtnClickAct()
{
    saveRaw(tr("save joint RAW image"),
            sideBySide(preview.palmprint.frame(), preview.palmVein.frame()));
}

void MainWindow::savePngUnlessShown(const QString &prefix, const Camera &camera,
                                    const QString &refusal)
{
    if (!camera.lastImage().isNull())
        log(refusal);
    else
        savePng(prefix, camera.lastImage());
}

/// Logs the same line whether the picture could be written or not.
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
