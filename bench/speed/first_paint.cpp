/// Starts like the console, or with --bare like the least program with a window, and ends once the
/// window is painted for the first time.

#include "app/appearance.h"
#include "app/mainwindow.h"
#include "tour/session.h"

#include <QApplication>
#include <QLabel>

#include <memory>

namespace {

class FirstPaint : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            QMetaObject::invokeMethod(qApp, "quit", Qt::QueuedConnection);
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
