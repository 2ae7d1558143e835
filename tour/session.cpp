#include "tour/session.h"

#include <QCoreApplication>
#include <QNetworkProxy>
#include <QTcpServer>
#include <QtTest>

namespace {

QDir imageFolder()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/img");
}

} // namespace

void stayOffScreen()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

quint16 freePort()
{
    QTcpServer server;
    server.setProxy(QNetworkProxy::NoProxy);
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

bool perform(const Step &step, Console *console, const QString &picturePath, int milliseconds)
{
    console->beginStep(picturePath);
    step.act(*console);
    const bool done = QTest::qWaitFor([&] { return step.succeeded(*console); }, milliseconds);
    const bool saved = console->savePicture();
    return done && saved;
}

QStringList savedPictures()
{
    return imageFolder().entryList(QDir::Files);
}

bool takeSavedPictures(const QStringList &before, const QDir &folder)
{
    int taken = 0;
    int left = 0;
    for (const QString &picture : savedPictures()) {
        if (before.contains(picture))
            continue;
        const bool moved = QFile::rename(imageFolder().filePath(picture), folder.filePath(picture));
        ++(moved ? taken : left);
    }
    return taken > 0 && left == 0;
}
