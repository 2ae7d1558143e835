#include "bench/linewatch.h"

#include <QMutex>
#include <QRegularExpression>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>

namespace {

constexpr const char *KnownWarnings[] = {
    "This plugin does not support propagateSizeHints()",
    "QStandardPaths: XDG_RUNTIME_DIR not set",
};

QMutex warningsMutex;
QStringList warnings;

void handle(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    const bool isKnown =
        std::any_of(std::begin(KnownWarnings), std::end(KnownWarnings),
                    [&text](const char *known) { return text.startsWith(QLatin1String(known)); });
    if (type == QtDebugMsg || type == QtInfoMsg || isKnown)
        return;
    std::fprintf(stderr, "%s\n", qPrintable(text)); // Qt ends the program after a fatal message
    const QMutexLocker locker(&warningsMutex);
    warnings.append(text);
}

/// Replaces what may differ between rounds: the folder, numbers, and whole records, since a new
/// month may have begun.
QString normalised(QString line, const QString &folder)
{
    static const QRegularExpression record(QStringLiteral("^Index[0-9]+: \\(.*\\)$"));
    static const QRegularExpression number(QStringLiteral("[0-9]+"));
    line.replace(folder, QStringLiteral("FOLDER"));
    line.replace(record, QStringLiteral("Index"));
    return line.replace(number, QStringLiteral("#"));
}

QStringList normalised(const QStringList &lines, const QString &folder)
{
    QStringList result;
    for (const QString &line : lines) {
        const QString general = normalised(line, folder);
        if (result.isEmpty() || result.last() != general)
            result.append(general);
    }
    return result;
}

} // namespace

QString LineWatch::complaint(const QString &step, const QStringList &lines, const QString &folder)
{
    const QStringList now = normalised(lines, folder);
    const auto first = known.constFind(step);
    if (first == known.constEnd()) {
        known.insert(step, now);
        return QString();
    }
    if (*first == now)
        return QString();
    for (const QString &line : now) {
        if (!first->contains(line))
            return QStringLiteral("no earlier round had this line: ") + line;
    }
    return QStringLiteral("the first round had these lines:\n  ") +
           first->join(QStringLiteral("\n  "));
}

QString unexpectedMessage(const QStringList &lines)
{
    static const QRegularExpression usual(
        QStringLiteral("^(Local Address：[0-9.]+: [0-9]+|Recieve connect: \\[[0-9.]+:[0-9]+\\]|"
                       "The connection is abandoned\\.|(Data In:)?\\[simulated\\] .+)$"));
    for (const QString &line : lines) {
        if (!usual.match(line).hasMatch())
            return line;
    }
    return QString();
}

void keepWarnings()
{
    qInstallMessageHandler(handle);
}

QStringList takeWarnings()
{
    const QMutexLocker locker(&warningsMutex);
    return std::exchange(warnings, {});
}
