#include "app/mainwindow.h"

#include "app/documentlines.h"
#include "data/wholefile.h"
#include "dialogs/adduserdlg.h"
#include "dialogs/remoteenrolldlg.h"
#include "link/cmdclient.h"
#include "widgets/controls.h"
#include "widgets/elidingcombobox.h"
#include "widgets/textlog.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QInputDialog>
#include <QSpinBox>

namespace {

constexpr QSize GroupSize(480, 170);
constexpr QSize LabelSize(30, 22);
constexpr QSize IdSize(80, 22);
constexpr QSize HandTypeSize(90, 22);
constexpr QSize ModeSize(80, 22);
constexpr QSize ButtonSize(100, 28);
constexpr int ButtonColumns = 4;

constexpr uint8_t FeatureKind = 0; // the only kind that the terminal knows

// Items of the mode box, which shows the mode that was commanded last.
constexpr int EmptyIndex = 0;
constexpr int EnrollIndex = 1;
constexpr int LocalRecognitionIndex = 2;

/// The folder of remote enrollments if it exists, else that of the program.
QString featureFolder()
{
    const QString program = QCoreApplication::applicationDirPath();
    const QString remote = program + QStringLiteral("/remote");
    return QFileInfo(remote).isDir() ? remote : program;
}

} // namespace

QGroupBox *MainWindow::createUserGroup()
{
    auto *group = controls::sized(new QGroupBox(tr("User Operation")), GroupSize);
    auto *layout = new QVBoxLayout(group);
    layout->addLayout(createUserRow());
    layout->addLayout(
        controls::buttonGrid({{tr("Add User"), SLOT(addUserBtnClickAct())},
                              {tr("Enroll Palm"), SLOT(enrollBtnClickAct())},
                              {tr("Verify Palm"), SLOT(recgBtnClickAct())},
                              {tr("Empty Mode"), SLOT(idealBtnClickAct())},
                              {tr("Get Palm Height"), SLOT(getTofDistBtnClickAct())},
                              {tr("Get User List"), SLOT(getUserListBtnClickAct())},
                              {tr("Remove User"), SLOT(delUserBtnClickAct())},
                              {tr("Clear Users"), SLOT(clearUserBtnClickAct())},
                              {tr("Export Users"), SLOT(exportUserInfoBtnClickAct())},
                              {tr("Remove Features"), SLOT(clearUserFeatBtnClickAct())},
                              {tr("Remote Enroll"), SLOT(remoteEnrollBtnClickAct())},
                              {tr("Import Features"), SLOT(importFeatureBtnClickAct())}},
                             ButtonColumns, ButtonSize, this));
    return group;
}

QLayout *MainWindow::createUserRow()
{
    idSpinBox = controls::field(new QSpinBox, "idSpinBox", IdSize);
    idSpinBox->setRange(MinUserId, MaxUserId);

    auto *handTypeCombo = controls::field(new QComboBox, "handTypeCombo", HandTypeSize);
    handTypeCombo->addItem(tr("Right Hand"), QStringLiteral("right"));
    handTypeCombo->addItem(tr("Left Hand"), QStringLiteral("left"));

    modeCombo = controls::field<QComboBox>(new ElidingComboBox, "modeCombo", ModeSize);
    modeCombo->addItem(tr("Empty"), QStringLiteral("Ideal"));
    modeCombo->addItem(tr("Enroll"), QStringLiteral("Enroll"));
    modeCombo->addItem(tr("Local Recognition"), QStringLiteral("LocalRecognition"));
    modeCombo->addItem(tr("Remote Recognition"), QStringLiteral("RemoteRecognition"));

    auto *row = new QHBoxLayout;
    row->addWidget(controls::label(QStringLiteral("ID: "), LabelSize, idSpinBox));
    row->addWidget(idSpinBox);
    row->addWidget(controls::label(tr("Type: "), LabelSize, handTypeCombo));
    row->addWidget(handTypeCombo);
    row->addStretch();
    row->addWidget(controls::label(tr("Mode:"), LabelSize, modeCombo));
    row->addWidget(modeCombo);
    row->addStretch();
    return row;
}

void MainWindow::getUserListBtnClickAct()
{
    QByteArray text;
    if (!fetchUserList(client, &text))
        return;
    log(tr("Data reading succeeded：%1").arg(text.size()));
    const std::optional<ListDocument<User>> users = readUsers(text);
    textlog::append(infoText, users ? userLines(*users) : QStringList(tr("JSON parsing failed.")));
}

void MainWindow::exportUserInfoBtnClickAct()
{
    notSupported();
}

void MainWindow::addUserBtnClickAct()
{
    runDialog<AddUserDlg>();
}

void MainWindow::remoteEnrollBtnClickAct()
{
    runDialog<RemoteEnrollDlg>();
}

void MainWindow::enrollBtnClickAct()
{
    // The captions in small letters differ from those of "Palm Vein Preview": the next click on
    // that button stops the preview and restores its own caption.
    const LivePreview::Captions captions{tr("palm vein preview"), tr("stop collecting")};
    preview.toggle(LivePreview::PalmVein, captions);
    modeCombo->setCurrentIndex(EnrollIndex);
    if (!client->startEnroll(static_cast<uint32_t>(idSpinBox->value()))) {
        log(tr("Enrollment failed."));
        return;
    }
    log(tr("The input instruction has been sent successfully. Please complete the input process "
           "according to the prompts."));
    preview.start(LivePreview::PalmVein, captions.running);
}

void MainWindow::recgBtnClickAct()
{
    modeCombo->setCurrentIndex(LocalRecognitionIndex);
    log(client->setMode(static_cast<uint8_t>(DeviceMode::LocalRecognition))
            ? tr("The device has entered recognition mode.")
            : tr("Fail to set mode."));
}

void MainWindow::idealBtnClickAct()
{
    modeCombo->setCurrentIndex(EmptyIndex);
    log(client->setMode(static_cast<uint8_t>(DeviceMode::Idle))
            ? tr("Instruction sending succeeded.")
            : tr("Instruction sending failed."));
}

void MainWindow::clearUserBtnClickAct()
{
    if (client->clearUsers())
        log(tr("User cleared."));
}

bool MainWindow::askUserId(uint32_t *userId)
{
    bool accepted = false;
    *userId = static_cast<uint32_t>(QInputDialog::getInt(
        this, tr("User ID"), tr("User ID："), MinUserId, MinUserId, MaxUserId, 1, &accepted));
    return accepted;
}

void MainWindow::delUserBtnClickAct()
{
    uint32_t userId = 0;
    if (askUserId(&userId) && client->deleteUser(userId))
        log(tr("User deleted successfully:%1").arg(userId));
}

void MainWindow::clearUserFeatBtnClickAct()
{
    uint32_t userId = 0;
    if (askUserId(&userId) && client->deleteUserFeatures(userId))
        log(tr("User features deleted successfully:%1").arg(userId));
}

void MainWindow::importFeatureBtnClickAct()
{
    const auto userId = static_cast<uint32_t>(idSpinBox->value());
    const QString path =
        QFileDialog::getOpenFileName(this, tr("Select feature file"), featureFolder(), tr("*.bin"))
            .trimmed();
    if (path.isEmpty())
        return;
    QByteArray features;
    if (!readFile(path, wire::FeatureSize + 1, &features)) {
        log(tr("Fail to open the file:%1").arg(path));
        return;
    }
    if (features.size() != static_cast<int>(wire::FeatureSize)) {
        log(tr("Wrong format of feature file."));
        return;
    }
    if (client->importUserFeatures(userId, FeatureKind,
                                   reinterpret_cast<const uint8_t *>(features.constData()),
                                   wire::FeatureSize))
        log(tr("Feature file importing succeeded."));
}
