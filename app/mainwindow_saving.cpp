#include "app/mainwindow.h"

void MainWindow::saveRgbPngBtnClickAct()
{
    notSupported();
}

void MainWindow::saveIrPngBtnClickAct()
{
    notSupported();
}

void MainWindow::saveMixPngBtnClickAct()
{
    notSupported();
}

void MainWindow::saveRgbRawBtnClickAct()
{
    notSupported();
}

void MainWindow::saveIrRawBtnClickAct()
{
    notSupported();
}

void MainWindow::saveMixRawBtnClickAct()
{
    notSupported();
}
