#include "testkit/windowwalk.h"

#include "app/finddialog.h"
#include "app/mainwindow.h"
#include "config/outputcfgdlg.h"
#include "config/usercfgdlg.h"
#include "config/vendorcfgdlg.h"
#include "dialogs/accessrecorddlg.h"
#include "dialogs/adduserdlg.h"
#include "dialogs/qrcodedialog.h"
#include "dialogs/remoteenrolldlg.h"
#include "dialogs/setsysinfodlg.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QtTest>

namespace {

constexpr int MaxFields = 8; // editable sections of one control, such as those of a date

std::unique_ptr<QWidget> makeMainWindow(Link * /*link*/)
{
    auto window = std::make_unique<MainWindow>();
    QMetaObject::invokeMethod(window.get(), "enableConnAct");
    return window;
}

std::unique_ptr<QWidget> makeFindDialog(Link *link)
{
    return std::make_unique<FindDialog>(&link->log);
}

} // namespace

const QList<WindowKind> &windowKinds()
{
    static const QList<WindowKind> kinds{
        {"main-window", makeMainWindow, "Quirel"},
        {"add-user", makeDialog<AddUserDlg>, "Add User", {300, 185}},
        {"remote-enroll", makeDialog<RemoteEnrollDlg>, "Remote Features Enroll", {300, 100}},
        {"system-settings", makeDialog<setSysInfoDlg>, "System Settings", {440, 100}},
        {"parameters", makeDialog<OutputCfgDlg>, "Parameter Setting", {730, 600}},
        {"user-configuration", makeDialog<UserCfgDlg>, "User Config"},
        {"device-information", makeDialog<vendorCfgDlg>, "Device Info", {1000, 320}},
        {"access-records", makeDialog<AccessRecordDlg>, "Access Record Management", {370, 200}},
        {"qr-codes", makeDialog<QRCodeDialog>, "QR Code Recognit", {530, 340}},
        {"find", makeFindDialog, "Find in "},
    };
    return kinds;
}

QList<QWidget *> focusableIn(const QWidget *window)
{
    QList<QWidget *> found;
    for (QWidget *widget : window->findChildren<QWidget *>()) {
        const bool part = widget->objectName().startsWith("qt_") ||
                          qobject_cast<QAbstractSpinBox *>(widget->parentWidget());
        if ((widget->focusPolicy() & Qt::TabFocus) && widget->isVisible() && widget->isEnabled() &&
            !widget->focusProxy() && !part)
            found.append(widget);
    }
    return found;
}

QStringList unreachedByTab(const QList<QWidget *> &controls)
{
    QList<QWidget *> unreached = controls;
    controls.first()->setFocus();
    for (int i = 0; i < controls.size(); ++i) {
        QWidget *focused = QApplication::focusWidget();
        // In a control of several fields Tab goes to its next field first.
        for (int field = 0; focused == QApplication::focusWidget() && field < MaxFields; ++field)
            QTest::keyClick(focused, Qt::Key_Tab);
        if (!QApplication::focusWidget()->visibleRegion().isEmpty())
            unreached.removeOne(QApplication::focusWidget());
    }
    QStringList names;
    for (const QWidget *control : unreached)
        names.append(control->objectName());
    return names;
}
