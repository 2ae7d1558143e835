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

constexpr uint8_t FeatureKind = 0; // the terminal knows no other

// Items of the mode box, which shows what was commanded last.
constexpr int EmptyIndex = 0;
constexpr int EnrollIndex = 1;
constexpr int LocalRecognitionIndex = 2;

/// Where remote enrollments lie, if the folder is there.
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
    layout->addLayout(createButtonGrid(
        {
            {QT_TR_NOOP("Add User"), SLOT(addUserBtnClickAct())},
            {QT_TR_NOOP("Enroll Palm"), SLOT(enrollBtnClickAct())},
            {QT_TR_NOOP("Verify Palm"), SLOT(recgBtnClickAct())},
            {QT_TR_NOOP("Empty Mode"), SLOT(idealBtnClickAct())},
            {QT_TR_NOOP("Get Palm Height"), SLOT(getTofDistBtnClickAct()),
             &MainWindow::getTofDistBtn},
            {QT_TR_NOOP("Get User List"), SLOT(getUserListBtnClickAct())},
            {QT_TR_NOOP("Remove User"), SLOT(delUserBtnClickAct())},
            {QT_TR_NOOP("Clear Users"), SLOT(clearUserBtnClickAct())},
            {QT_TR_NOOP("Export Users"), SLOT(exportUserInfoBtnClickAct())},
            {QT_TR_NOOP("Remove Features"), SLOT(clearUserFeatBtnClickAct())},
            {QT_TR_NOOP("Remote Enroll"), SLOT(remoteEnrollBtnClickAct())},
            {QT_TR_NOOP("Import Features"), SLOT(importFeatureBtnClickAct())},
        },
        ButtonColumns, ButtonSize));
    return group;
}

QLayout *MainWindow::createUserRow()
{
    idSpinBox = controls::sized(new QSpinBox, IdSize);
    idSpinBox->setObjectName(QStringLiteral("idSpinBox"));
    idSpinBox->setRange(MinUserId, MaxUserId);

    auto *handTypeCombo = controls::sized(new QComboBox, HandTypeSize);
    handTypeCombo->setObjectName(QStringLiteral("handTypeCombo"));
    handTypeCombo->addItem(tr("Right Hand"), QStringLiteral("right"));
    handTypeCombo->addItem(tr("Left Hand"), QStringLiteral("left"));

    modeCombo = controls::sized<QComboBox>(new ElidingComboBox, ModeSize);
    modeCombo->setObjectName(QStringLiteral("modeCombo"));
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
    // The captions in small letters are not those of the preview's own slot: its next click stops
    // the preview and brings its own caption back.
    if (showIrBtn->text() == tr("palm vein preview")) {
        startCollecting(*findCollector(PalmVein), tr("stop collecting"));
    } else {
        stopCollecting();
        controls::setCaption(showIrBtn, tr("palm vein preview"));
    }
    modeCombo->setCurrentIndex(EnrollIndex);
    if (!client->startEnroll(static_cast<uint32_t>(idSpinBox->value()))) {
        log(tr("Enrollment failed."));
        return;
    }
    log(tr("The input instruction has been sent successfully. Please complete the input process "
           "according to the prompts."));
    startCollecting(*findCollector(PalmVein), tr("stop collecting"));
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
