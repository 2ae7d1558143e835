/// Measures in the console what `bare` does with a plain socket; the window is shown and painted.
/// Each line of the output is a name and a number.

#include "app/appearance.h"
#include "bench/framecounter.h"
#include "bench/measure.h"
#include "dialogs/accessrecorddlg.h"
#include "link/cmdclient.h"
#include "testkit/console.h"
#include "widgets/textlog.h"

#include <QApplication>
#include <QDateEdit>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QSpinBox>
#include <QTextEdit>
#include <QTextStream>
#include <QtTest>

#include <algorithm>
#include <ctime>
#include <vector>

namespace {

constexpr int Settle = 300; // ms

double processorMicroseconds()
{
    return static_cast<double>(std::clock()) * 1e6 / CLOCKS_PER_SEC;
}

void print(const char *name, double value)
{
    QTextStream(stdout) << name << ' ' << QString::number(value, 'f', 5) << '\n';
}

/// A connected client whose log is painted.
struct Link
{
    explicit Link(quint16 port)
    {
        textlog::prepare(&log);
        log.setFixedSize(320, 200);
        log.show();
        if (!client.connectToDevice("127.0.0.1", port))
            qFatal("no terminal");
        QTest::qWait(Settle);
    }

    QTextEdit log;
    CmdClient client{&log, nullptr};
};

void roundTrips(quint16 port, int count)
{
    Link link(port);
    std::vector<qint64> times;
    QElapsedTimer timer;
    for (int i = 0; i < count; ++i) {
        uint8_t mode = 0;
        timer.start();
        link.client.getMode(&mode);
        times.push_back(timer.nsecsElapsed());
    }
    std::nth_element(times.begin(), times.begin() + count / 2, times.end());
    print("us", static_cast<double>(times[static_cast<size_t>(count) / 2]) / 1000);
}

void connectWindow(Console *console, quint16 port)
{
    console->find<QLineEdit>("hostEdit")->setText(QStringLiteral("127.0.0.1"));
    console->find<QSpinBox>("portSpinBox")->setValue(port);
    console->find<QLineEdit>("watchPortEdit")->setText(QStringLiteral("0"));
    console->window.show();
    console->click("openBtnClickAct");
    QTest::qWait(Settle);
}

void frames(quint16 port, int code, double seconds)
{
    Console console;
    FrameCounter counter;
    connectWindow(&console, port);
    const char *const buttons[] = {"showRgbBtnClickAct", "showIrBtnClickAct", "showMixBtnClickAct"};
    console.click(buttons[code - 1]);
    QTest::qWait(Settle);
    const int before = counter.total();
    const double processorBefore = processorMicroseconds();
    QEventLoop loop;
    QElapsedTimer timer;
    timer.start();
    QTimer::singleShot(static_cast<int>(seconds * 1000), &loop, SLOT(quit()));
    loop.exec();
    const double taken = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    // A frame of the joint preview has two pictures.
    const double shown = (counter.total() - before) / (code == 3 ? 2.0 : 1.0);
    print("frames", shown);
    print("fps", shown / taken);
    print("processor_us", (processorMicroseconds() - processorBefore) / shown);
    console.click(buttons[code - 1]);
}

/// Requests frames without the pause between them.
void memory(quint16 port, int minutes, int framesAMinute)
{
    Console console;
    FrameCounter counter;
    connectWindow(&console, port);
    console.click("showRgbBtnClickAct");
    const auto showUntil = [&](int frames) {
        while (counter.total() < frames) {
            QMetaObject::invokeMethod(&console.window, "update_task");
            QCoreApplication::processEvents();
        }
        return static_cast<double>(residentKiB());
    };
    print("first_minute", showUntil(framesAMinute));
    print("last_minute", showUntil(minutes * framesAMinute));
    print("frames", counter.total());
}

void exportMonth(quint16 port, int year, int month)
{
    Link link(port);
    AccessRecordDlg dialog(&link.client, &link.log, nullptr);
    drive::find<QDateEdit>(&dialog, "dateEdit")->setDate(QDate(year, month, 1));
    dialog.show();
    QTest::qWait(Settle);
    QElapsedTimer timer;
    timer.start();
    drive::click(&dialog, "exportRecordBtnClickAct");
    print("seconds", static_cast<double>(timer.nsecsElapsed()) / 1e9);
    const QString path = link.log.toPlainText().section(QStringLiteral(" saved to "), 1).trimmed();
    print("bytes", static_cast<double>(QFile(path).size()));
    QFile::remove(path);
}

} // namespace

int main(int argc, char *argv[])
{
    drive::stayOffScreen();
    qputenv("QT_LOGGING_RULES", "default.debug=false");
    QApplication application(argc, argv);
    prepareAppearance();
    const QStringList arguments = QCoreApplication::arguments();
    const QString what = arguments.value(1);
    const auto port = static_cast<quint16>(arguments.value(2).toUInt());
    if (what == QLatin1String("round-trips"))
        roundTrips(port, arguments.value(3).toInt());
    else if (what == QLatin1String("frames"))
        frames(port, arguments.value(3).toInt(), arguments.value(4).toDouble());
    else if (what == QLatin1String("memory"))
        memory(port, arguments.value(3).toInt(), arguments.value(4).toInt());
    else if (what == QLatin1String("export"))
        exportMonth(port, arguments.value(3).toInt(), arguments.value(4).toInt());
    else
        return 2;
    return 0;
}
