/// Writes an example of every exchange into the description of the wire, between two marks; with
/// --check compares instead, but for replies that differ each time.

#include "tools/exchanges/exchanges.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QSaveFile>
#include <QTextStream>

namespace {

constexpr int ShownBytes = 64;
constexpr int BytesPerLine = 16;
const QByteArray Begin = "<!-- exchanges -->\n";
const QByteArray End = "<!-- end of exchanges -->\n";

QByteArray dump(char mark, const QByteArray &packet)
{
    QByteArray text;
    for (int at = 0; at < qMin(packet.size(), ShownBytes); at += BytesPerLine) {
        const QByteArray line = packet.mid(at, BytesPerLine);
        QByteArray shown;
        for (const char c : line)
            shown.append(c >= ' ' && c <= '~' ? c : '.');
        text +=
            mark + QByteArray(" ") + line.toHex(' ').leftJustified(3 * BytesPerLine) + shown + '\n';
    }
    if (packet.size() > ShownBytes)
        text += mark + QByteArray(" ... ") + QByteArray::number(packet.size()) + " bytes in all\n";
    return text;
}

QByteArray describe(const std::vector<Exchange> &exchanges)
{
    QByteArray text;
    for (const Exchange &exchange : exchanges)
        text += "\n`" + QByteArray(exchange.command) + "`\n\n```text\n" +
                dump('>', exchange.request) + dump('<', exchange.reply) + "```\n";
    return text + '\n';
}

// Their replies differ from one recording to the next, though not in size.
const QByteArrayList ChangingReplies = {
    "`getTofDistance`", "`getPalmprintImage`", "`getPalmVeinImage`",     "`getDualImages`",
    "`getRtcTime`",     "`getQrCodeList`",     "`getRemoteEnrollImages`"};

QByteArray withoutChanges(const QByteArray &text)
{
    QByteArray kept;
    QByteArray command;
    for (const QByteArray &line : text.split('\n')) {
        if (line.startsWith('`') && !line.startsWith("```"))
            command = line;
        if (!line.startsWith("< ") || line.startsWith("< ...") ||
            !ChangingReplies.contains(command))
            kept += line + '\n';
    }
    return kept;
}

bool write(const QString &path, const QByteArray &text)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
}

int fail(const QString &reason)
{
    QTextStream(stderr) << reason << '\n';
    return 1;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // the client's log is a widget
    QApplication application(argc, argv);
    const QCommandLineOption checkOption(QStringLiteral("check"),
                                         QStringLiteral("Compare, do not write."));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption(checkOption);
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("The description."));
    parser.process(application);

    const QString path = parser.positionalArguments().value(0);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("Cannot read ") + path);
    const QByteArray text = file.readAll();
    const int begin = text.indexOf(Begin) + Begin.size();
    const int end = text.indexOf(End);
    if (begin < Begin.size() || end < begin)
        return fail(QStringLiteral("No marks in ") + path);

    const std::vector<Exchange> exchanges = recordExchanges();
    if (exchanges.empty())
        return 1;
    const QByteArray examples = describe(exchanges);
    if (parser.isSet(checkOption))
        return withoutChanges(examples) == withoutChanges(text.mid(begin, end - begin))
                   ? 0
                   : fail(QStringLiteral("The examples are not what the console sends."));
    file.close();
    return write(path, text.left(begin) + examples + text.mid(end))
               ? 0
               : fail(QStringLiteral("Cannot write ") + path);
}
