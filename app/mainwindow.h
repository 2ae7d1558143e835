#pragma once

#include "app/framerate.h"
#include "link/wire.h"

#include <QImage>
#include <QList>
#include <QMainWindow>
#include <QPixmap>

#include <initializer_list>
#include <vector>

class CmdClient;
class ImgLabel;
class QBoxLayout;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QTextEdit;
class QTimer;
class WatchServer;

/// The console's one window. Every slot runs on the GUI thread and may block it for a command's
/// time-out; results and reasons of failure are lines in `infoText`.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);

    /// Tells the tooltips what is true when they are asked for.
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    /// Lets modal dialogs open over the pictures, beside the logs.
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
    /// What `update_task` collects from the terminal at each tick.
    enum ImgUpdateState : int32_t {
        Idle = 0,
        Palmprint = 1,
        PalmVein = 2,
        Joint = 3,
        PalmHeight = 10,
    };

    /// Something that `update_task` collects, and the button that starts and stops it: the
    /// button's caption tells which of both a click does. Texts are untranslated.
    struct Collector
    {
        ImgUpdateState state;
        int interval; ///< ms from the end of one tick to the next
        QPushButton *MainWindow::*button;
        const char *idleText;
        const char *runningText;
        bool (MainWindow::*collect)();
        const char *failureText;
    };
    static const Collector collectors[];
    static const Collector *findCollector(int32_t state);

    /// A button of a panel's grid, row by row; untranslated text, member to keep it in or null.
    struct GridButton
    {
        const char *text;
        const char *slot;
        QPushButton *MainWindow::*member = nullptr;
    };

    void createLayout();
    void createTabOrder(const QList<QGroupBox *> &groups);
    QGroupBox *createVideoPanel();
    ImgLabel *createImgLabel(const char *name, QPixmap *pixmap);
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
    /// Lets the Enter key press Connect while the field has the focus.
    void connectOnEnter(QWidget *field);
    QGridLayout *createButtonGrid(std::initializer_list<GridButton> buttons, int columns,
                                  QSize buttonSize);

    template <class Dialog> void runDialog();
    void placeDialog(QWidget *dialog) const;
    void log(const QString &line);
    void notSupported();
    void enableConnection(bool enabled);

    void toggleCollecting(ImgUpdateState state);
    void startCollecting(const Collector &collector, const QString &caption);
    void stopCollecting();
    bool collectPalmprint();
    bool collectPalmVein();
    bool collectJoint();
    bool collectPalmHeight();
    void showPalmprint();
    void showPalmVein();
    static void showFrame(const std::vector<uint8_t> &frame, QImage *lastImage, QPixmap *pixmap,
                          ImgLabel *label);
    QString connectionTip() const;
    static QString pictureTip(FrameRate *rate);
    void showPixel(QPoint position, const QImage &lastImage, const std::vector<uint8_t> &frame);

    /// False when the operator cancels.
    bool askUserId(uint32_t *userId);

    void savePng(const QString &prefix, const QImage &image);
    void saveRaw(const QString &caption, const QByteArray &pixels);

    std::vector<uint8_t> rgbFrameBuffer;
    std::vector<uint8_t> irFrameBuffer;
    QImage lastRgbImage; ///< copy of the last palmprint frame shown; null before the first
    QImage lastIrImage;
    QPixmap rgbPixmap;
    QPixmap irPixmap;
    FrameRate rgbRate;
    FrameRate irRate;
    int32_t imgUpdateState = Idle;

    QTextEdit *infoText;
    QTextEdit *watchText;
    CmdClient *client;
    WatchServer *watchServer;
    QTimer *updateTimer;

    ImgLabel *rgbImgLabel;
    ImgLabel *irImgLabel;
    QLabel *pixelReadoutLabel;
    QPushButton *showRgbBtn = nullptr;
    QPushButton *showIrBtn = nullptr;
    QPushButton *showMixBtn = nullptr;
    QPushButton *getTofDistBtn = nullptr;

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
