#include "tour/steps.h"

#include <QRegularExpression>

namespace {

constexpr int FramesToSee = 5;
constexpr QPoint ReadoutPosition(180, 240);

/// Whether the last lines of the log are these.
bool endsWith(const QStringList &lines, const QStringList &last)
{
    return lines.mid(lines.size() - last.size()) == last;
}

/// Counts how often a camera's picture has become another one.
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
    int count = -1; // the first look finds no change
};

bool readoutIsTrue(const Console &console, const char *label)
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

/// Watching a preview until it has moved, and stopping it with the pointer on a picture.
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
    steps->push_back({name + QStringLiteral("-readout"),
                      [button, label](Console &console) {
                          console.click(button);
                          console.pointAt(label, ReadoutPosition);
                      },
                      [label](const Console &console) { return readoutIsTrue(console, label); }});
}

void addConnectionSteps(std::vector<Step> *steps, const TourPorts &ports)
{
    steps->push_back({QStringLiteral("start"), [](Console &) {},
                      [](const Console &console) {
                          return console.isUsable("openBtnClickAct") &&
                                 !console.isUsable("getUserListBtnClickAct");
                      }});
    steps->push_back({QStringLiteral("connect-in-vain"),
                      [ports](Console &console) { connectTo(console, ports.unused); },
                      [](const Console &console) {
                          return endsWith(console.infoLines(),
                                          {QStringLiteral("Connecting failed."),
                                           QStringLiteral("Fail to connect the device.")});
                      }});
    steps->push_back({QStringLiteral("connect"),
                      [ports](Console &console) { connectTo(console, ports.terminal); },
                      [](const Console &console) {
                          return endsWith(console.infoLines(),
                                          {QStringLiteral("Device connected."),
                                           QStringLiteral("Device connected.")}) &&
                                 console.isUsable("getUserListBtnClickAct");
                      }});
}

void addListenerStep(std::vector<Step> *steps, const TourPorts &ports)
{
    steps->push_back({QStringLiteral("messages"),
                      [ports](Console &console) {
                          console.type("watchPortEdit", QString::number(ports.messages));
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

std::vector<Step> tourSteps(const TourPorts &ports, const QDir &folder)
{
    std::vector<Step> steps;
    addConnectionSteps(&steps, ports);
    addListenerStep(&steps, ports);
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
