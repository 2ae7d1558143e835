#include "app/documentlines.h"

#include <QCoreApplication>

namespace {

/// A member of the system information and the line that shows it.
template <class Value> struct InfoLine
{
    std::optional<Value> SystemInfo::*member;
    const char *text;
};

constexpr InfoLine<QString> Identity[] = {
    {&SystemInfo::name, QT_TRANSLATE_NOOP("MainWindow", "Device Name：%1")},
    {&SystemInfo::serial, QT_TRANSLATE_NOOP("MainWindow", "Device Serial Number：%1")},
    {&SystemInfo::firmwareVersion, QT_TRANSLATE_NOOP("MainWindow", "Firmware Version：%1")},
    {&SystemInfo::veinAlgorithmVersion,
     QT_TRANSLATE_NOOP("MainWindow", "Vein Algorithm Version：%1")},
    {&SystemInfo::printAlgorithmVersion,
     QT_TRANSLATE_NOOP("MainWindow", "Print Algorithm Version：%1")},
    {&SystemInfo::qrCodeAlgorithmVersion,
     QT_TRANSLATE_NOOP("MainWindow", "QrCode Algorithm Version：%1")},
};
constexpr InfoLine<quint32> Capacities[] = {
    {&SystemInfo::maxUsers, QT_TRANSLATE_NOOP("MainWindow", "System User Volume：%1")},
    {&SystemInfo::maxRecords, QT_TRANSLATE_NOOP("MainWindow", "System Record Volume：%1")},
};
constexpr InfoLine<QString> Network[] = {
    {&SystemInfo::macAddress, QT_TRANSLATE_NOOP("MainWindow", "MAC Address：%1")},
};

template <class Value, size_t Count>
void appendLines(QStringList *lines, const SystemInfo &info, const InfoLine<Value> (&rows)[Count])
{
    for (const InfoLine<Value> &row : rows) {
        if (const std::optional<Value> &value = info.*row.member)
            lines->append(QCoreApplication::translate("MainWindow", row.text).arg(*value));
    }
}

} // namespace

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
    appendLines(&lines, info, Identity);
    appendLines(&lines, info, Capacities);
    appendLines(&lines, info, Network);
    return lines;
}
