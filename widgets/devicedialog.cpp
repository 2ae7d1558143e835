#include "widgets/devicedialog.h"

#include "widgets/screenfit.h"
#include "widgets/textlog.h"

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
