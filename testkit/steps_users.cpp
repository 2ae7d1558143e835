#include "testkit/steps.h"

#include "data/wholefile.h"
#include "link/wire.h"

namespace {

constexpr int NewUserId = 7; // the lowest free one of the simulated terminal

Answer addUser()
{
    return [](QWidget *dialog) {
        drive::click(dialog, "getEmptyUIDBtnClickAct");
        drive::type(dialog, "userNameEdit", QStringLiteral("Grace Lee"));
        drive::type(dialog, "cardEdit", QStringLiteral("12345678"));
        drive::type(dialog, "departmentEdit", QStringLiteral("Laboratory"));
        drive::click(dialog, "createBtnClickAct");
    };
}

/// Enrolls, waits for the terminal's message that it is done, and fetches images and features.
Answer enrollRemotely(Console *console)
{
    return [console](QWidget *dialog) {
        drive::click(dialog, "startBtnClickAct");
        drive::waitFor(
            [console] { return anyMatch(console->watchLines(), ".*user 255 enrolled.*"); });
        drive::click(dialog, "readBtnClickAct");
        dialog->close();
    };
}

Step enrollStep(const char *name, int times)
{
    return {QString::fromLatin1(name),
            [](Console &console) {
                console.type("idSpinBox", QString::number(NewUserId));
                console.click("enrollBtnClickAct");
            },
            [times](const Console &console) {
                return console.caption("showIrBtnClickAct") == QLatin1String("stop collecting") &&
                       anyMatch(console.newInfoLines(), "The input instruction has been sent .*") &&
                       console.watchLines().filter(QStringLiteral("user 7 enrolled")).size() ==
                           times;
            }};
}

Step enrollStoppedStep()
{
    return {QStringLiteral("enroll-watched"),
            [](Console &console) { console.click("showIrBtnClickAct"); },
            [](const Console &console) {
                return console.caption("showIrBtnClickAct") == QLatin1String("Palm Vein Preview") &&
                       console.isUsable("showMixBtnClickAct");
            }};
}

Step userListStep()
{
    return {QStringLiteral("user-list"),
            [](Console &console) { console.click("getUserListBtnClickAct"); },
            [](const Console &console) {
                const QStringList lines = console.newInfoLines();
                return anyMatch(lines, "User count：9") &&
                       anyMatch(lines, "UID:7, username: Grace Lee, feature count:12") &&
                       anyMatch(lines, "UID:[0-9]+, username: .*\\p{Han}.*, feature count:[0-9]+");
            }};
}

Step palmHeightStoppedStep()
{
    return {QStringLiteral("palm-height-stopped"),
            [](Console &console) { console.click("getTofDistBtnClickAct"); },
            [](const Console &console) {
                return console.caption("getTofDistBtnClickAct") ==
                           QLatin1String("Get Palm Height") &&
                       console.isUsable("showMixBtnClickAct");
            }};
}

Step importStep(const QString &featureFile)
{
    return {QStringLiteral("import-features"),
            [featureFile](Console &console) {
                writeWholeFile(featureFile, QByteArray(static_cast<int>(wire::FeatureSize), 'f'));
                console.click("importFeatureBtnClickAct", {answer::file(featureFile)});
            },
            [](const Console &console) {
                return anyMatch(console.newInfoLines(), "Feature file importing succeeded\\.");
            }};
}

Step remoteEnrollStep()
{
    return {QStringLiteral("remote-enroll"),
            [](Console &console) {
                console.click("remoteEnrollBtnClickAct", {enrollRemotely(&console)});
            },
            [](const Console &console) {
                return anyMatch(console.newInfoLines(), "read the 5th image") &&
                       anyMatch(console.newInfoLines(), "Features saved：.*/remote_feat\\.bin");
            }};
}

} // namespace

std::vector<Step> userSteps(const QDir &folder)
{
    return {
        dialogStep("add-user", "addUserBtnClickAct", {addUser()}, "User created\\."),
        enrollStep("enroll", 1),
        enrollStep("enroll-again", 2),
        enrollStoppedStep(),
        userListStep(),
        clickStep("palm-height", "getTofDistBtnClickAct", "TOF: [0-9]+"),
        palmHeightStoppedStep(),
        clickStep("verify-palm", "recgBtnClickAct", "The device has entered recognition mode\\."),
        clickStep("empty-mode", "idealBtnClickAct", "Instruction sending succeeded\\."),
        {QStringLiteral("remove-nobody"),
         [](Console &console) { console.click("delUserBtnClickAct", {answer::close()}); },
         [](const Console &console) { return console.newInfoLines().isEmpty(); }},
        dialogStep("remove-features", "clearUserFeatBtnClickAct", {answer::number(NewUserId)},
                   "User features deleted successfully:7"),
        importStep(folder.absoluteFilePath(QStringLiteral("tour-features.bin"))),
        remoteEnrollStep(),
        dialogStep("remove-user", "delUserBtnClickAct", {answer::number(NewUserId)},
                   "User deleted successfully:7"),
        clickStep("export-users", "exportUserInfoBtnClickAct", "Not supported for now\\."),
        clickStep("clear-users", "clearUserBtnClickAct", "User cleared\\."),
    };
}
