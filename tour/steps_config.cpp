#include "tour/answers.h"
#include "tour/steps.h"

#include <QCoreApplication>

namespace {

/// What differs from one configuration dialog to the next.
struct ConfigDialogUse
{
    const char *load;
    const char *set;
    const char *exportFile;
    const char *importFile;
    const char *fileName;
    const char *field;
    const char *typed;
};

constexpr ConfigDialogUse OutputUse{"getBtnClickAct",    "setBtnClickAct",   "exportBtnClickAct",
                                    "importBtnClickAct", "zt415_output.cfg", "remote ip",
                                    "192.168.31.77"};
constexpr ConfigDialogUse UserUse{"getBtnClickAct",    "setBtnClickAct", "exportBtnClickAct",
                                  "importBtnClickAct", "zt415_user.cfg", "gateway ip",
                                  "192.168.31.2"};
constexpr ConfigDialogUse VendorUse{"getCfgBtnClickAct",
                                    "setCfgBtnClickAct",
                                    "exportVendorJsonBtnClickAct",
                                    "importVendorJsonBtnClickAct",
                                    "zt415_vendor.cfg",
                                    "manufacture name",
                                    "Kovant Ltd."};

/// Changes what the terminal has, exports it, and imports the exported file, which goes to the
/// tour's folder.
std::vector<Answer> useDocument(const ConfigDialogUse &use, const QDir &folder)
{
    const QLatin1String name(use.fileName);
    const QString exported = QDir(QCoreApplication::applicationDirPath()).filePath(name);
    const QString kept = folder.absoluteFilePath(QLatin1String("tour-") + name);
    return {[=](QWidget *dialog) {
                answers::click(dialog, use.load);
                answers::type(dialog, use.field, QLatin1String(use.typed));
                answers::click(dialog, use.set);
                answers::click(dialog, use.exportFile);
                QFile::rename(exported, kept);
                answers::click(dialog, use.importFile);
                dialog->close();
            },
            answers::file(kept)};
}

bool allUsed(const Console &console, const char *exportedLine)
{
    const QStringList lines = console.newInfoLines();
    return anyMatch(lines, "[Cc]fg file loaded：[0-9]+") &&
           anyMatch(lines, "Cfg data issued\\.?") && anyMatch(lines, "File loaded：[0-9]+") &&
           anyMatch(lines, exportedLine) && anyMatch(lines, "Cfg file issued\\.");
}

Answer useClockAndSensor()
{
    return [](QWidget *dialog) {
        for (const char *button :
             {"setRtcBtnClickAct", "getRtcBtnClickAct", "calibTofBtnClickAct",
              "getTofBiasBtnClickAct", "exportLogBtnClickAct", "resetSysBtnClickAct"})
            answers::click(dialog, button);
        dialog->close();
    };
}

} // namespace

std::vector<Step> configSteps(const QDir &folder)
{
    return {
        {QStringLiteral("parameters"),
         [&folder](Console &console) {
             console.click("sysCfgBtnClickAct", useDocument(OutputUse, folder));
         },
         [](const Console &console) {
             return allUsed(console, "File save to .*/zt415_output\\.cfg");
         }},
        {QStringLiteral("device-information"),
         [&folder](Console &console) {
             console.click("devCfgAct", useDocument(VendorUse, folder));
         },
         [](const Console &console) {
             return allUsed(console, "File saved to .*/zt415_vendor\\.cfg");
         }},
        {QStringLiteral("user-configuration"),
         [&folder](Console &console) { console.openUserConfig(useDocument(UserUse, folder)); },
         [](const Console &console) {
             return allUsed(console, "File saved to .*/zt415_user\\.cfg");
         }},
        {QStringLiteral("clock-and-sensor"),
         [](Console &console) {
             console.click("devCfgAct", {useClockAndSensor(), answers::number(-20)});
         },
         [](const Console &console) {
             const QStringList lines = console.newInfoLines();
             return anyMatch(lines, "RTC time set succeeded\\.") &&
                    anyMatch(lines, "RTC time：20[0-9]{2}(-[0-9]+){2} [0-9]+(:[0-9]+){2}") &&
                    anyMatch(lines, "TOF bias corrected\\.") &&
                    anyMatch(lines, "TOF corrected value：-20");
         }},
    };
}
