#include "app/aboutaction.h"

#include "version.h"

#include <QMessageBox>

AboutAction::AboutAction(QWidget *describedWindow)
    : QAction(describedWindow),
      window(describedWindow)
{
    setText(tr("About %1").arg(window->windowTitle()));
    setShortcut(QKeySequence::HelpContents);
    connect(this, SIGNAL(triggered()), this, SLOT(showAbout()));
}

void AboutAction::showAbout()
{
    QMessageBox::about(
        window, text(),
        tr("%1 %2\nConsole for a palm-recognition access terminal\n\nQt %3")
            .arg(window->windowTitle(), QStringLiteral(QUIREL_VERSION), QLatin1String(qVersion())));
}
