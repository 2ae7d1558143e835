#include "testkit/steps.h"

#include "testkit/scriptedpeer.h"
#include "testkit/simulatorprocess.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QtTest>

namespace {

constexpr int FramesToSee = 5;
constexpr QPoint ReadoutPosition(180, 240);

QDir imageFolder()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/img");
}

bool endsWith(const QStringList &lines, const QStringList &last)
{
    return lines.mid(lines.size() - last.size()) == last;
}

/// Counts how often a camera's picture changes.
class MovingPicture
{
public:
    explicit MovingPicture(const char *name)
        : label(name)
    {
    }

    int changes(const Console &console)
    {
        const QImage picture = console.picture(label);
        if (picture != last)
            ++count;
        last = picture;
        return count;
    }

private:
    const char *label;
    QImage last;
    int count = -1; // the first picture is no change
};

bool readoutIsCorrect(const Console &console, const char *label)
{
    const int grey = qGray(console.picture(label).pixel(ReadoutPosition));
    return console.labelText("pixelReadoutLabel") == QStringLiteral("Pt[180, 240]: %1").arg(grey);
}

void connectTo(Console &console, quint16 port)
{
    console.type("hostEdit", QStringLiteral("127.0.0.1"));
    console.type("portSpinBox", QString::number(port));
    console.click("openBtnClickAct");
}

/// A preview runs until its pictures have changed, then stops with the pointer on a picture.
void addPreviewSteps(std::vector<Step> *steps, const QString &name, const char *button,
                     const std::vector<const char *> &labels)
{
    std::vector<MovingPicture> pictures(labels.begin(), labels.end());
    steps->push_back({name, [button](Console &console) { console.click(button); },
                      [button, pictures](const Console &console) mutable {
                          bool moving = true;
                          for (MovingPicture &picture : pictures)
                              moving = picture.changes(console) >= FramesToSee && moving;
                          return moving &&
                                 console.caption(button) == QLatin1String("Stop Collecting");
                      }});
    const char *label = labels.front();
    steps->push_back(
        {name + QStringLiteral("-readout"),
         [button, label](Console &console) {
             console.click(button);
             console.pointAt(label, ReadoutPosition);
         },
         [label](const Console &console) { return readoutIsCorrect(console, label); }});
}

void addConnectionSteps(std::vector<Step> *steps, quint16 port)
{
    steps->push_back({QStringLiteral("start"), [](Console &) {},
                      [](const Console &console) {
                          return console.isUsable("openBtnClickAct") &&
                                 !console.isUsable("getUserListBtnClickAct");
                      }});
    steps->push_back({QStringLiteral("connect-in-vain"),
                      [](Console &console) { connectTo(console, freePort()); },
                      [](const Console &console) {
                          return endsWith(console.infoLines(),
                                          {QStringLiteral("Connecting failed."),
                                           QStringLiteral("Fail to connect the device.")});
                      }});
    steps->push_back(
        {QStringLiteral("connect"), [port](Console &console) { connectTo(console, port); },
         [](const Console &console) {
             return endsWith(console.infoLines(), {QStringLiteral("Device connected."),
                                                   QStringLiteral("Device connected.")}) &&
                    console.isUsable("getUserListBtnClickAct");
         }});
}

void addListenerStep(std::vector<Step> *steps, quint16 port)
{
    steps->push_back({QStringLiteral("messages"),
                      [port](Console &console) {
                          console.type("watchPortEdit", QString::number(port));
                          console.click("openWatchBtnClickAct");
                      },
                      [](const Console &console) {
                          const QStringList lines = console.watchLines();
                          return anyMatch(lines, "Local Address：127\\.0\\.0\\.1: 60086") &&
                                 anyMatch(lines, "Recieve connect: \\[127\\.0\\.0\\.1:[0-9]+\\]") &&
                                 anyMatch(lines, "Data In:.*simulated.*");
                      }});
}

void addDisconnectStep(std::vector<Step> *steps)
{
    steps->push_back({QStringLiteral("disconnect"),
                      [](Console &console) { console.click("closeBtnClickAct"); },
                      [](const Console &console) {
                          return endsWith(console.infoLines(),
                                          {QStringLiteral("The connection is abandoned."),
                                           QStringLiteral("The connection has been abandoned.")}) &&
                                 endsWith(console.watchLines(),
                                          {QStringLiteral("The connection is abandoned.")}) &&
                                 !console.isUsable("getUserListBtnClickAct");
                      }});
}

} // namespace

bool perform(const Step &step, Console *console, const QString &picturePath, int milliseconds)
{
    const int failures = drive::failureCount();
    console->beginStep(picturePath);
    step.act(*console);
    const bool done = QTest::qWaitFor([&] { return step.succeeded(*console); }, milliseconds);
    const bool saved = console->savePicture();
    return done && saved && drive::failureCount() == failures;
}

bool anyMatch(const QStringList &lines, const char *pattern)
{
    return lines.indexOf(QRegularExpression(QString::fromUtf8(pattern))) >= 0;
}

Step clickStep(const char *name, const char *button, const char *pattern)
{
    return dialogStep(name, button, {}, pattern);
}

Step dialogStep(const char *name, const char *button, const std::vector<Answer> &answers,
                const char *pattern)
{
    return {
        QString::fromLatin1(name),
        [button, answers](Console &console) { console.click(button, answers); },
        [pattern](const Console &console) { return anyMatch(console.newInfoLines(), pattern); }};
}

std::vector<Step> sessionSteps(const SimulatorProcess &simulator, const QDir &folder)
{
    std::vector<Step> steps;
    addConnectionSteps(&steps, simulator.port());
    addListenerStep(&steps, simulator.messagePort());
    addPreviewSteps(&steps, QStringLiteral("palmprint"), "showRgbBtnClickAct", {"rgbImgLabel"});
    addPreviewSteps(&steps, QStringLiteral("palm-vein"), "showIrBtnClickAct", {"irImgLabel"});
    addPreviewSteps(&steps, QStringLiteral("joint"), "showMixBtnClickAct",
                    {"irImgLabel", "rgbImgLabel"});
    for (const auto &family :
         {userSteps(folder), configSteps(folder), recordSteps(folder), settingsSteps(folder)})
        steps.insert(steps.end(), family.begin(), family.end());
    addDisconnectStep(&steps);
    return steps;
}

void clickExport(const QWidget *dialog, const char *button, const QString &fileName,
                 const QString &target)
{
    const QString path = QDir(QCoreApplication::applicationDirPath()).filePath(fileName);
    const QString aside = target + QStringLiteral(".aside");
    const bool hadFile = QFile::rename(path, aside);
    drive::click(dialog, button);
    if (!QFile::rename(path, target))
        drive::fail(QStringLiteral("%1 wrote no %2").arg(QLatin1String(button), fileName));
    if (hadFile)
        QFile::rename(aside, path);
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
