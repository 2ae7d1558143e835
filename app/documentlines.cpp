#include "app/documentlines.h"

#include <QCoreApplication>

QStringList userLines(const ListDocument<User> &users)
{
    if (!users.isPresent)
        return {};
    QStringList lines(
        QCoreApplication::translate("MainWindow", "User count：%1").arg(users.entries.size()));
    const QString line =
        QCoreApplication::translate("MainWindow", "UID:%1, username: %2, feature count:%3");
    for (const User &user : users.entries) {
        const qint64 features = qint64{user.veinCount} + user.printCount;
        lines.append(line.arg(user.id, user.name, QString::number(features)));
    }
    return lines;
}

QStringList systemInfoLines(const SystemInfo &info)
{
    QStringList lines;
    const auto add = [&lines](const auto &value, const char *text) {
        if (value)
            lines.append(QCoreApplication::translate("MainWindow", text).arg(*value));
    };
    add(info.name, QT_TRANSLATE_NOOP("MainWindow", "Device Name：%1"));
    add(info.serial, QT_TRANSLATE_NOOP("MainWindow", "Device Serial Number：%1"));
    add(info.firmwareVersion, QT_TRANSLATE_NOOP("MainWindow", "Firmware Version：%1"));
    add(info.veinAlgorithmVersion, QT_TRANSLATE_NOOP("MainWindow", "Vein Algorithm Version：%1"));
    add(info.printAlgorithmVersion, QT_TRANSLATE_NOOP("MainWindow", "Print Algorithm Version：%1"));
    add(info.qrCodeAlgorithmVersion,
        QT_TRANSLATE_NOOP("MainWindow", "QrCode Algorithm Version：%1"));
    add(info.maxUsers, QT_TRANSLATE_NOOP("MainWindow", "System User Volume：%1"));
    add(info.maxRecords, QT_TRANSLATE_NOOP("MainWindow", "System Record Volume：%1"));
    add(info.macAddress, QT_TRANSLATE_NOOP("MainWindow", "MAC Address：%1"));
    return lines;
}
