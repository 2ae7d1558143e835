#include "bench/soaksteps.h"

namespace {

constexpr int FramesToSee = 100;
constexpr int FramesBeforeRefresh = 5;

struct Preview
{
    const char *name;
    const char *button;
    const char *idleText;
};

constexpr Preview Previews[] = {
    {"long-palmprint", "showRgbBtnClickAct", "Palmprint Preview"},
    {"long-palm-vein", "showIrBtnClickAct", "Palm Vein Preview"},
    {"long-joint", "showMixBtnClickAct", "Joint Preview"},
};

void addPreviewSteps(std::vector<Step> *steps, const Preview &preview, FrameCounter *frames)
{
    const char *button = preview.button;
    const char *idleText = preview.idleText;
    steps->push_back({QString::fromLatin1(preview.name),
                      [button, frames](Console &console) {
                          frames->mark();
                          console.click(button);
                      },
                      [frames](const Console &) { return frames->sinceMark() >= FramesToSee; }});
    steps->push_back({QLatin1String(preview.name) + QStringLiteral("-stopped"),
                      [button](Console &console) { console.click(button); },
                      [button, idleText](const Console &console) {
                          return console.caption(button) == QLatin1String(idleText);
                      }});
}

bool isServed(const Console &console)
{
    return anyMatch(console.watchLines(), "Recieve connect: .*");
}

bool isConnectedAnew(const Console &console)
{
    const QString connected = QStringLiteral("Device connected.");
    return console.newInfoLines() == QStringList{connected, connected} && isServed(console);
}

/// Clears the message log first, so that the step sees new messages only.
Step connectStep(const char *name)
{
    return {QString::fromLatin1(name),
            [](Console &console) {
                console.click("clearWatchTextBtnClickAct");
                console.click("openBtnClickAct");
            },
            isConnectedAnew};
}

/// The new connection ends the preview; its button keeps the caption until the next click.
Step connectInPreviewStep(FrameCounter *frames)
{
    return {QStringLiteral("connect-in-preview"),
            [frames](Console &console) {
                frames->mark();
                console.click("showMixBtnClickAct");
                drive::waitFor([frames] { return frames->sinceMark() >= FramesBeforeRefresh; });
                console.click("clearWatchTextBtnClickAct");
                console.click("openBtnClickAct");
                console.click("showMixBtnClickAct");
            },
            isConnectedAnew};
}

/// The terminal sends a message when it has restarted.
Step cameBackStep()
{
    return {QStringLiteral("came-back"),
            [](Console &console) { console.click("clearWatchTextBtnClickAct"); }, isServed};
}

void addListenerSteps(std::vector<Step> *steps)
{
    steps->push_back(
        {QStringLiteral("listener-off"),
         [](Console &console) { console.click("openWatchBtnClickAct"); },
         [](const Console &console) {
             return console.caption("openWatchBtnClickAct") == QLatin1String("Start Listening") &&
                    console.watchLines().endsWith(QStringLiteral("The connection is abandoned."));
         }});
    steps->push_back({QStringLiteral("listener-on"),
                      [](Console &console) {
                          console.click("clearWatchTextBtnClickAct");
                          console.click("openWatchBtnClickAct");
                      },
                      isServed});
}

Step unusedDialogsStep()
{
    return {QStringLiteral("unused-dialogs"),
            [](Console &console) {
                for (const char *button :
                     {"addUserBtnClickAct", "delUserBtnClickAct", "clearUserFeatBtnClickAct",
                      "remoteEnrollBtnClickAct", "importFeatureBtnClickAct", "devCfgAct",
                      "sysCfgBtnClickAct", "recordBtnClickAct", "qrcodeBtnClickAct",
                      "rebootBtnClickAct"})
                    console.click(button, {answer::close()});
                console.click("manuCfgBtnClickAct",
                              {answer::text(QStringLiteral("qrabel274")), answer::close()});
                console.openUserConfig({answer::close()});
            },
            [](const Console &console) { return console.newInfoLines().isEmpty(); }};
}

/// Logs grow with use and must not count as a leak.
Step clearLogsStep()
{
    return {QStringLiteral("clear-logs"),
            [](Console &console) {
                console.click("clearInfoTextBtnClickAct");
                console.click("clearWatchTextBtnClickAct");
            },
            [](const Console &console) {
                return console.infoLines().isEmpty() && console.watchLines().isEmpty();
            }};
}

} // namespace

std::vector<Step> soakSteps(const SimulatorProcess &simulator, const QDir &folder,
                            FrameCounter *frames)
{
    std::vector<Step> steps = sessionSteps(simulator, folder);
    const Step disconnect = steps.back();
    steps.pop_back();

    steps.push_back(cameBackStep());
    steps.push_back(connectStep("connect-after-reboot"));
    for (const Preview &preview : Previews)
        addPreviewSteps(&steps, preview, frames);
    steps.push_back(connectStep("connect-while-connected"));
    steps.push_back(connectInPreviewStep(frames));
    addListenerSteps(&steps);
    steps.push_back(unusedDialogsStep());
    steps.push_back(clearLogsStep());

    steps.push_back(disconnect);
    return steps;
}
