#pragma once

#include "app/livepreview.h"

#include <QList>
#include <QMainWindow>

class QBoxLayout;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QTextEdit;
class WatchServer;

/// The console's one window. Every slot runs on the GUI thread and may block it for a command's
/// timeout; results and reasons of failure are lines in `infoText`.
///
/// The slots of these buttons open a dialog, or have a name that says something else than the
/// button's caption:
///
///   slot                       button              what it opens or does
///   openBtnClickAct            "Connect"           connects, or connects anew
///   openWatchBtnClickAct       "Start Listening"   starts or stops the message listener
///   getTofDistBtnClickAct      "Get Palm Height"   starts or stops reading the distance sensor
///   recgBtnClickAct            "Verify Palm"       sets the mode to local recognition
///   idealBtnClickAct           "Empty Mode"        sets the mode to idle
///   addUserBtnClickAct         "Add User"          AddUserDlg
///   delUserBtnClickAct         "Remove User"       a box that asks for the user's ID
///   clearUserFeatBtnClickAct   "Remove Features"   the same
///   exportUserInfoBtnClickAct  "Export Users"      nothing: not supported
///   remoteEnrollBtnClickAct    "Remote Enroll"     RemoteEnrollDlg
///   importFeatureBtnClickAct   "Import Features"   a box that asks for a file
///   getSysInfoBtnClickAct      "Get Settings"      lists the system information
///   devCfgAct                  "Device Config"     vendorCfgDlg, titled "Device Info"
///   restartBtnClickAct         "User Config"       nothing: not supported
///   sysCfgBtnClickAct          "System Config"     OutputCfgDlg, titled "Parameter Setting"
///   recordBtnClickAct          "Record Manage"     AccessRecordDlg
///   rebootBtnClickAct          "Reboot Device"     a question
///   manuCfgBtnClickAct         "Factory Config"    a box for the key, then setSysInfoDlg, titled
///                                                  "System Settings", for the serial number
///   qrcodeBtnClickAct          "QRCode Manage"     QRCodeDialog
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);

    /// Brings the tooltip of the Connect button up to date when it is requested.
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    /// Moves a modal dialog over the pictures, beside the logs, when it opens.
    bool event(QEvent *event) override;

private slots:
    void irImgLabelMouseMoved(QPoint position);
    void irImgLabelMousePressed(QPoint position);
    void rgbImgLabelMouseMoved(QPoint position);
    void rgbImgLabelMousePressed(QPoint position);
    void update_task();
    int32_t setImgUpdateState();
    void showRgbBtnClickAct();
    void showIrBtnClickAct();
    void showMixBtnClickAct();
    void saveRgbPngBtnClickAct();
    void saveIrPngBtnClickAct();
    void saveMixPngBtnClickAct();
    void saveRgbRawBtnClickAct();
    void saveIrRawBtnClickAct();
    void saveMixRawBtnClickAct();
    void clearWatchTextBtnClickAct();
    void openWatchBtnClickAct();
    void clearInfoTextBtnClickAct();
    void addUserBtnClickAct();
    void enrollBtnClickAct();
    void recgBtnClickAct();
    void getTofDistBtnClickAct();
    void idealBtnClickAct();
    void getModeBtnClickAct();
    void delUserBtnClickAct();
    void getUserListBtnClickAct();
    void exportUserInfoBtnClickAct();
    void clearUserBtnClickAct();
    void remoteEnrollBtnClickAct();
    void clearUserFeatBtnClickAct();
    void importFeatureBtnClickAct();
    void getSysInfoBtnClickAct();
    void manuCfgBtnClickAct();
    void restartBtnClickAct();
    void sysCfgBtnClickAct();
    void recordBtnClickAct();
    void rebootBtnClickAct();
    void devCfgAct();
    void qrcodeBtnClickAct();
    void openBtnClickAct();
    void closeBtnClickAct();
    void enableConnAct();
    void disableConnAct();

private:
    void createLayout();
    void createTabOrder(const QList<QGroupBox *> &groups);
    QGroupBox *createVideoPanel();
    QLayout *createCameraColumn(const QString &caption, ImgLabel *label);
    QGroupBox *createVideoControlGroup();
    QGroupBox *createUserGroup();
    QLayout *createUserRow();
    QGroupBox *createListenerGroup();
    QGroupBox *createHintGroup();
    void addLogWithClear(QBoxLayout *layout, QTextEdit *log, const char *clearSlot);
    QGroupBox *createSettingsGroup();
    QGroupBox *createConnectionGroup();
    QGridLayout *createConnectionGrid();
    /// Makes the Enter key press Connect while the field has the focus.
    void connectOnEnter(QWidget *field);

    template <class Dialog> void runDialog();
    void placeDialog(QWidget *dialog) const;
    void log(const QString &line);
    void notSupported();
    void enableConnection(bool enabled);

    QString connectionTip() const;

    /// Returns false when the operator cancels.
    bool askUserId(uint32_t *userId);

    /// On purpose tests the opposite of what the refusal says: refuses once a frame has been shown.
    void savePngUnlessShown(const QString &prefix, const Camera &camera, const QString &refusal);
    void savePng(const QString &prefix, const QImage &image);
    void saveRaw(const QString &caption, const QByteArray &pixels);

    QTextEdit *infoText;
    QTextEdit *watchText;
    WatchServer *watchServer;
    CmdClient *client;
    LivePreview preview;

    QSpinBox *idSpinBox;
    QComboBox *modeCombo;

    QLineEdit *watchPortEdit;
    QPushButton *openWatchBtn;

    QLineEdit *hostEdit;
    QSpinBox *portSpinBox;
    QPushButton *openBtn;
    QList<QGroupBox *> connectionGroups; ///< usable only while connected
};

template <class Dialog> void MainWindow::runDialog()
{
    Dialog dialog(client, infoText, this);
    dialog.exec();
}
