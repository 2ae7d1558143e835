#include "tour/answers.h"
#include "tour/steps.h"

#include <QCoreApplication>

namespace {

Answer writeSerialNumber()
{
    return [](QWidget *dialog) {
        answers::click(dialog, "randomSerialBtnClickAct");
        answers::click(dialog, "setSerialBtnClickAct");
        answers::click(dialog, "selectOtaFileBtnClickAct");
        answers::click(dialog, "otaBtnClickAct");
        dialog->close();
    };
}

} // namespace

std::vector<Step> settingsSteps(const QDir &folder)
{
    const auto raw = [&folder](const char *name) {
        return answers::file(folder.absoluteFilePath(QLatin1String(name)));
    };
    return {
        clickStep("system-information", "getSysInfoBtnClickAct", "Device Name：.*simulated.*"),
        clickStep("work-mode", "getModeBtnClickAct", "Current mode：Empty"),
        dialogStep("wrong-key", "manuCfgBtnClickAct", {answers::text(QStringLiteral("QRABEL274"))},
                   "Wrong secret key\\."),
        dialogStep("serial-number", "manuCfgBtnClickAct",
                   {answers::text(QStringLiteral("qrabel274")), writeSerialNumber(),
                    answers::file(QCoreApplication::applicationFilePath())},
                   "Serial number set succeded\\."),
        clickStep("palmprint-png", "saveRgbPngBtnClickAct",
                  "Empty palmprint image, fail to save it\\."),
        clickStep("palm-vein-png", "saveIrPngBtnClickAct",
                  "Empty palm vein image, fail to save it\\."),
        clickStep("joint-png", "saveMixPngBtnClickAct",
                  "Image saved: .*\\\\img\\\\ir_[0-9]{12}\\.png"),
        dialogStep("palmprint-raw", "saveRgbRawBtnClickAct", {raw("tour-palmprint.bin")},
                   "Image saved：.*/tour-palmprint\\.bin"),
        dialogStep("palm-vein-raw", "saveIrRawBtnClickAct", {raw("tour-palm-vein.bin")},
                   "Image saved：.*/tour-palm-vein\\.bin"),
        dialogStep("joint-raw", "saveMixRawBtnClickAct", {raw("tour-joint.bin")},
                   "Image saved：.*/tour-joint\\.bin"),
        clickStep("user-config", "restartBtnClickAct", "Not supported for now\\."),
        {QStringLiteral("reboot-not"),
         [](Console &console) { console.click("rebootBtnClickAct", {answers::cancel()}); },
         [](const Console &console) { return console.newInfoLines().isEmpty(); }},
        dialogStep("reboot", "rebootBtnClickAct", {answers::yes()},
                   "The system will restart after 10 seconds\\."),
    };
}
