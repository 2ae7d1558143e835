#include "widgets/devicedialog.h"

#include "link/textlog.h"

DeviceDialog::DeviceDialog(CmdClient *cmdClient, QTextEdit *log, QWidget *parent)
    : QDialog(parent),
      client(cmdClient),
      infoText(log)
{
}

void DeviceDialog::log(const QString &line)
{
    textlog::append(infoText, line);
}
