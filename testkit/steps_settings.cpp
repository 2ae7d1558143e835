#include "testkit/steps.h"

#include <QCoreApplication>

namespace {

Answer writeSerialNumber()
{
    return [](QWidget *dialog) {
        drive::click(dialog, "randomSerialBtnClickAct");
        drive::click(dialog, "setSerialBtnClickAct");
        drive::click(dialog, "selectOtaFileBtnClickAct");
        drive::click(dialog, "otaBtnClickAct");
        dialog->close();
    };
}

} // namespace

std::vector<Step> settingsSteps(const QDir &folder)
{
    const auto raw = [&folder](const char *name) {
        return answer::file(folder.absoluteFilePath(QLatin1String(name)));
    };
    return {
        clickStep("system-information", "getSysInfoBtnClickAct", "Device Name：.*simulated.*"),
        clickStep("work-mode", "getModeBtnClickAct", "Current mode：Empty"),
        dialogStep("wrong-key", "manuCfgBtnClickAct", {answer::text(QStringLiteral("QRABEL274"))},
                   "Wrong secret key\\."),
        dialogStep("serial-number", "manuCfgBtnClickAct",
                   {answer::text(QStringLiteral("qrabel274")), writeSerialNumber(),
                    answer::file(QCoreApplication::applicationFilePath())},
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
         [](Console &console) { console.click("rebootBtnClickAct", {answer::close()}); },
         [](const Console &console) { return console.newInfoLines().isEmpty(); }},
        dialogStep("reboot", "rebootBtnClickAct", {answer::yes()},
                   "The system will restart after 10 seconds\\."),
    };
}
