#include "link/textlog.h"

#include <QDateTime>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextEdit>

#include <algorithm>

namespace {

// Removing from the front moves all that stays, so it is done rarely.
constexpr int DroppedLines = 5000;
constexpr int DroppedCharacters = 500000;

constexpr QLatin1Char LineEnd('\n');
constexpr QChar Ellipsis(0x2026);

/// All that the document takes for the end of a line. A line separator would leave the lines in one
/// block, whose layout takes minutes when there are thousands.
constexpr ushort LineEnds[] = {'\n',   '\r',  QChar::LineSeparator, QChar::ParagraphSeparator,
                               0xFDD0, 0xFDD1};

/// Of a line; it leaves with it.
class Arrival : public QTextBlockUserData
{
public:
    explicit Arrival(const QDateTime &when)
        : time(when)
    {
    }

    const QDateTime time;
};

bool endsLine(QChar character)
{
    return std::find(std::begin(LineEnds), std::end(LineEnds), character.unicode()) !=
           std::end(LineEnds);
}

/// In an edit of its own: merged with what was appended at the end, it would count as a change of
/// the whole document, which is then laid out anew.
void dropOldLines(QTextDocument *document)
{
    const int lines = document->blockCount() - textlog::KeptLines;
    const int characters = document->characterCount() - textlog::KeptCharacters;
    if (lines < DroppedLines && characters < DroppedCharacters)
        return;
    const int byLines = document->findBlockByNumber(qMax(lines, 0)).position();
    const int byCharacters = document->findBlock(qMax(characters, 0)).position();
    QTextCursor cursor(document);
    cursor.setPosition(qMax(byLines, byCharacters), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

/// Every end of a line made the same.
QString plainLineEnds(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    for (const ushort end : LineEnds)
        text.replace(QChar(end), LineEnd);
    return text;
}

QString bounded(const QString &entry)
{
    if (entry.size() <= textlog::MaxLineLength &&
        std::none_of(entry.begin(), entry.end(), endsLine))
        return entry;
    QStringList lines = plainLineEnds(entry.left(textlog::MaxEntryLength)).split(LineEnd);
    const bool whole =
        entry.size() <= textlog::MaxEntryLength && lines.size() <= textlog::MaxEntryLines;
    lines = lines.mid(0, textlog::MaxEntryLines);
    for (QString &line : lines) {
        if (line.size() > textlog::MaxLineLength)
            line = line.left(textlog::MaxLineLength) + Ellipsis;
    }
    if (!whole && !lines.last().endsWith(Ellipsis))
        lines.append(Ellipsis);
    return lines.join(LineEnd);
}

/// Whether a font has to shape the text: to combine its characters or to leave some out.
bool needsShaping(const QString &text)
{
    return std::any_of(text.begin(), text.end(), [](QChar character) {
        return character.isMark() || character.isSurrogate() ||
               character.category() == QChar::Other_Format;
    });
}

/// Without shaping, which only kerns most texts, a long list is laid out in two thirds of the time.
QTextCharFormat formatFor(const QString &text)
{
    QTextCharFormat format;
    if (!needsShaping(text))
        format.setFontStyleStrategy(QFont::PreferNoShaping);
    return format;
}

void markArrival(QTextBlock line)
{
    const QDateTime now = QDateTime::currentDateTime();
    for (; line.isValid(); line = line.next())
        line.setUserData(new Arrival(now));
}

} // namespace

void textlog::prepare(QTextEdit *log)
{
    log->setUndoRedoEnabled(false);
    // One that came with a long list would have all of it laid out again, later, at another width.
    log->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    log->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

void textlog::append(QTextEdit *log, const QString &entry)
{
    append(log, QStringList(entry));
}

void textlog::append(QTextEdit *log, const QStringList &entries)
{
    if (entries.isEmpty())
        return;
    QStringList lines;
    for (const QString &entry : entries.mid(qMax(0, entries.size() - KeptLines)))
        lines.append(bounded(entry));
    const QString text = lines.join(LineEnd);
    QScrollBar *bar = log->verticalScrollBar();
    const bool following = bar->value() == bar->maximum();

    QTextDocument *document = log->document();
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    cursor.movePosition(QTextCursor::End);
    if (!document->isEmpty())
        cursor.insertBlock();
    const int first = cursor.blockNumber();
    cursor.insertText(text, formatFor(text));
    cursor.endEditBlock();
    markArrival(document->findBlockByNumber(first));
    dropOldLines(document);

    if (following)
        bar->setValue(bar->maximum());
}

QString textlog::timedText(const QTextEdit *log)
{
    QString text;
    for (QTextBlock line = log->document()->begin(); line.isValid(); line = line.next()) {
        if (const auto *arrival = static_cast<const Arrival *>(line.userData()))
            text += arrival->time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz  "));
        text += line.text() + LineEnd;
    }
    return text;
}
