#include "testkit/steps.h"

#include <algorithm>
#include <iterator>

namespace {

/// Names that differ between the configuration dialogs.
struct ConfigDialogUse
{
    const char *name;
    const char *load;
    const char *set;
    const char *exportFile;
    const char *importFile;
    const char *field;
    const char *typed;
    const char *lines[5]; ///< patterns of the log lines
};

constexpr ConfigDialogUse OutputUse{"output",
                                    "getBtnClickAct",
                                    "setBtnClickAct",
                                    "exportBtnClickAct",
                                    "importBtnClickAct",
                                    "remote ip",
                                    "192.168.31.77",
                                    {"Cfg file loaded：[0-9]+", "Cfg data issued\\.",
                                     "File loaded：[0-9]+", "File save to .*/zt415_output\\.cfg",
                                     "Cfg file issued\\."}};
constexpr ConfigDialogUse UserUse{"user",
                                  "getBtnClickAct",
                                  "setBtnClickAct",
                                  "exportBtnClickAct",
                                  "importBtnClickAct",
                                  "gateway ip",
                                  "192.168.31.2",
                                  {"Cfg file loaded：[0-9]+", "Cfg data issued\\.",
                                   "File loaded：[0-9]+", "File saved to .*/zt415_user\\.cfg",
                                   "Cfg file issued\\."}};
constexpr ConfigDialogUse VendorUse{"vendor",
                                    "getCfgBtnClickAct",
                                    "setCfgBtnClickAct",
                                    "exportVendorJsonBtnClickAct",
                                    "importVendorJsonBtnClickAct",
                                    "manufacture name",
                                    "Kovant Ltd.",
                                    {"cfg file loaded：[0-9]+", "Cfg data issued",
                                     "File loaded：[0-9]+", "File saved to .*/zt415_vendor\\.cfg",
                                     "Cfg file issued\\."}};

/// Changes the terminal's document, exports it and imports the exported file.
std::vector<Answer> useDocument(const ConfigDialogUse &use, const QDir &folder)
{
    const QString file = QStringLiteral("zt415_%1.cfg").arg(QLatin1String(use.name));
    const QString kept = folder.absoluteFilePath(QStringLiteral("tour-") + file);
    return {[=](QWidget *dialog) {
                drive::click(dialog, use.load);
                drive::type(dialog, use.field, QLatin1String(use.typed));
                drive::click(dialog, use.set);
                clickExport(dialog, use.exportFile, file, kept);
                drive::click(dialog, use.importFile);
                dialog->close();
            },
            answer::file(kept)};
}

bool allUsed(const Console &console, const ConfigDialogUse &use)
{
    const QStringList lines = console.newInfoLines();
    return std::all_of(std::begin(use.lines), std::end(use.lines),
                       [&lines](const char *pattern) { return anyMatch(lines, pattern); });
}

Answer useClockAndSensor()
{
    return [](QWidget *dialog) {
        for (const char *button :
             {"setRtcBtnClickAct", "getRtcBtnClickAct", "calibTofBtnClickAct",
              "getTofBiasBtnClickAct", "exportLogBtnClickAct", "resetSysBtnClickAct"})
            drive::click(dialog, button);
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
         [](const Console &console) { return allUsed(console, OutputUse); }},
        {QStringLiteral("device-information"),
         [&folder](Console &console) {
             console.click("devCfgAct", useDocument(VendorUse, folder));
         },
         [](const Console &console) { return allUsed(console, VendorUse); }},
        {QStringLiteral("user-configuration"),
         [&folder](Console &console) { console.openUserConfig(useDocument(UserUse, folder)); },
         [](const Console &console) { return allUsed(console, UserUse); }},
        {QStringLiteral("clock-and-sensor"),
         [](Console &console) {
             console.click("devCfgAct", {useClockAndSensor(), answer::number(-20)});
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
