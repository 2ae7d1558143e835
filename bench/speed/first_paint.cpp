/// Starts like the console, or with --bare like the least program with a window, says so once the
/// window is painted for the first time, and ends.

#include "app/appearance.h"
#include "app/mainwindow.h"
#include "tour/session.h"

#include <QApplication>
#include <QLabel>

#include <cstdio>
#include <memory>

namespace {

void tellAndQuit()
{
    std::puts("painted");
    std::fflush(stdout);
    QCoreApplication::quit();
}

class FirstPaint : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) // its children follow within the same event
            QMetaObject::invokeMethod(qApp, tellAndQuit, Qt::QueuedConnection);
        return QObject::eventFilter(watched, event);
    }
};

std::unique_ptr<QMainWindow> bareWindow()
{
    auto window = std::make_unique<QMainWindow>();
    window->setCentralWidget(new QLabel(QStringLiteral("Quirel")));
    window->setFixedSize(1200, 800);
    return window;
}

std::unique_ptr<QMainWindow> console()
{
    prepareAppearance();
    return std::make_unique<MainWindow>();
}

} // namespace

int main(int argc, char *argv[])
{
    stayOffScreen();
    const QApplication application(argc, argv);
    const bool bare = argc > 1 && qstrcmp(argv[1], "--bare") == 0;
    const std::unique_ptr<QMainWindow> window = bare ? bareWindow() : console();
    FirstPaint paint;
    window->installEventFilter(&paint);
    window->show();
    return QApplication::exec();
}
