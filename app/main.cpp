#include "app/appearance.h"
#include "app/language.h"
#include "app/mainwindow.h"
#include "version.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QCoreApplication::setOrganizationDomain(QStringLiteral("kovant.example"));
    QCoreApplication::setOrganizationName(QStringLiteral("Kovant"));
    QCoreApplication::setApplicationName(QStringLiteral("Quirel"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUIREL_APPLICATION_VERSION));

    prepareScaling();
    QApplication application(argc, argv);
    prepareAppearance();
    useLanguage();

    MainWindow window;
    window.show();
    return QApplication::exec();
}
