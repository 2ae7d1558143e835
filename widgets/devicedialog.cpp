#include "widgets/devicedialog.h"

#include "widgets/textlog.h"
#include "widgets/screenfit.h"

DeviceDialog::DeviceDialog(CmdClient *cmdClient, QTextEdit *log, QWidget *parent)
    : QDialog(parent),
      client(cmdClient),
      infoText(log)
{
    new ScreenFit(this);
}

void DeviceDialog::log(const QString &line)
{
    textlog::append(infoText, line);
}
