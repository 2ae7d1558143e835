#include "widgets/textlog.h"

#include <QAbstractTextDocumentLayout>
#include <QDateTime>
#include <QLocale>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextEdit>

#include <algorithm>
#include <vector>

namespace {

// Old lines are removed rarely and many at a time, since each removal moves all remaining lines.
constexpr int DroppedLines = 5000;
constexpr int DroppedCharacters = 500000;

constexpr QLatin1Char LineEnd('\n');
constexpr QChar Ellipsis(0x2026);
/// Pixels of indentation of a wrapped line; the next lines of an entry are indented twice as much.
constexpr int Indent = 12;

/// All characters that the document treats as the end of a line. A line separator would keep the
/// lines in one block, whose layout takes minutes for thousands of lines.
constexpr ushort LineEnds[] = {'\n',   '\r',  QChar::LineSeparator, QChar::ParagraphSeparator,
                               0xFDD0, 0xFDD1};

/// Invisible characters that can change how others are read: control characters except line ends
/// and the tab, and those that control bidirectional text.
constexpr struct
{
    ushort first;
    ushort last;
} HiddenCharacters[] = {{0x00, 0x08},     {0x0B, 0x0C},     {0x0E, 0x1F},     {0x7F, 0x9F},
                        {0x061C, 0x061C}, {0x200E, 0x200F}, {0x202A, 0x202E}, {0x2066, 0x2069}};

/// One line as it is shown; its full text too if it is shown cut.
struct Line
{
    QString shown;
    QString uncut;
    bool continues = false; ///< belongs to the same entry as the line before

    int size() const { return shown.size() + uncut.size() + 1; }
};

/// Arrival time and uncut text of one line of a log; deleted with the line's block.
class LineData : public QTextBlockUserData
{
public:
    LineData(const QDateTime &when, const QString &text, qint64 charactersSoFar)
        : time(when),
          uncut(text),
          total(charactersSoFar)
    {
    }

    const QDateTime time;
    const QString uncut;
    const qint64 total; ///< size of all lines up to this one since the log was empty
};

const LineData *dataOf(const QTextBlock &block)
{
    return static_cast<const LineData *>(block.userData());
}

qint64 totalAt(const QTextBlock &block)
{
    const LineData *data = dataOf(block);
    return data ? data->total : 0;
}

bool endsLine(QChar character)
{
    return std::find(std::begin(LineEnds), std::end(LineEnds), character.unicode()) !=
           std::end(LineEnds);
}

bool isHidden(QChar character)
{
    return std::any_of(std::begin(HiddenCharacters), std::end(HiddenCharacters),
                       [code = character.unicode()](const auto &range) {
                           return range.first <= code && code <= range.last;
                       });
}

bool isPlain(QChar character)
{
    const bool isPrintableAscii = character >= QLatin1Char(' ') && character <= QLatin1Char('~');
    return isPrintableAscii || (!endsLine(character) && !isHidden(character));
}

/// Converts all line ends to LineEnd and hidden characters to U+FFFD.
QString cleaned(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    for (QChar &character : text) {
        if (endsLine(character))
            character = LineEnd;
        else if (isHidden(character))
            character = QChar::ReplacementCharacter;
    }
    return text;
}

/// Returns the beginning of a text that is longer than `length`, without half a surrogate pair.
QString beginning(const QString &text, int length)
{
    return text.left(text.at(length - 1).isHighSurrogate() ? length - 1 : length);
}

Line cut(const QString &line)
{
    if (line.size() <= textlog::MaxLineLength)
        return {line, QString()};
    return {beginning(line, textlog::MaxLineLength) + Ellipsis, line};
}

/// Returns the number of lines of an entry that are shown.
int shownLines(const QStringList &lines)
{
    int count = 0;
    int length = 0;
    while (count < qMin(lines.size(), textlog::MaxEntryLines) && length < textlog::MaxShownLength)
        length += qMin(lines.at(count++).size(), textlog::MaxLineLength) + 1;
    return count;
}

void addEntry(std::vector<Line> *lines, const QString &entry)
{
    if (entry.size() <= textlog::MaxLineLength && std::all_of(entry.begin(), entry.end(), isPlain))
        return lines->push_back({entry, QString()});
    const bool whole = entry.size() <= textlog::MaxEntryLength;
    const QString kept = whole ? entry : beginning(entry, textlog::MaxEntryLength) + Ellipsis;
    const QStringList texts = cleaned(kept).split(LineEnd);
    const auto first = static_cast<std::ptrdiff_t>(lines->size());
    const int shown = shownLines(texts);
    for (const QString &text : texts.mid(0, shown))
        lines->push_back(cut(text));
    if (texts.size() > shown)
        lines->push_back({Ellipsis, texts.mid(shown).join(LineEnd)});
    std::for_each(lines->begin() + first + 1, lines->end(),
                  [](Line &line) { line.continues = true; });
}

/// Returns whether the text needs shaping, which combines or leaves out characters.
bool needsShaping(const QString &text)
{
    return std::any_of(text.begin(), text.end(), [](QChar character) {
        return character.isMark() || character.isSurrogate() ||
               character.category() == QChar::Other_Format;
    });
}

/// Turns shaping off where it would only kern; a long list is then laid out in two thirds of the
/// time.
QTextCharFormat formatFor(const QString &text)
{
    QTextCharFormat format;
    if (!needsShaping(text))
        format.setFontStyleStrategy(QFont::PreferNoShaping);
    return format;
}

/// Only the first line of an entry begins at the left edge, whatever the direction of its text.
QTextBlockFormat blockFormat(bool continues)
{
    QTextBlockFormat format;
    format.setLeftMargin(continues ? 2 * Indent : Indent);
    format.setTextIndent(continues ? 0 : -Indent);
    format.setLayoutDirection(Qt::LeftToRight);
    return format;
}

/// Inserts the lines in one edit; neighbours of the same indentation are inserted together.
void insertLines(QTextCursor cursor, const std::vector<Line> &lines)
{
    cursor.beginEditBlock();
    bool hasBlock = cursor.document()->isEmpty(); // which has one block
    for (auto next = lines.begin(); next != lines.end();) {
        const bool continues = next->continues;
        if (hasBlock)
            cursor.setBlockFormat(blockFormat(continues));
        else
            cursor.insertBlock(blockFormat(continues));
        hasBlock = false;
        QStringList texts;
        for (; next != lines.end() && next->continues == continues; ++next)
            texts.append(next->shown);
        const QString text = texts.join(LineEnd);
        cursor.insertText(text, formatFor(text));
    }
    cursor.endEditBlock();
}

void attachData(QTextBlock block, const std::vector<Line> &lines)
{
    const QDateTime now = QDateTime::currentDateTime();
    qint64 total = totalAt(block.previous());
    for (const Line &line : lines) {
        total += line.size();
        block.setUserData(new LineData(now, line.uncut, total));
        block = block.next();
    }
}

/// Removes the oldest lines and returns their height. This is a separate edit: merged with the
/// insertion at the end it would count as a change of the whole document and cause a full layout.
qreal dropOldLines(QTextDocument *document)
{
    const QTextBlock first = document->firstBlock();
    const qint64 total = totalAt(document->lastBlock());
    const int lines = document->blockCount() - textlog::KeptLines;
    const qint64 characters = total - totalAt(first) - textlog::KeptCharacters;
    if (lines < DroppedLines && characters < DroppedCharacters)
        return 0;
    QTextBlock kept = document->findBlockByNumber(qMax(lines, 0));
    while (total - totalAt(kept) > textlog::KeptCharacters)
        kept = kept.next();
    const QAbstractTextDocumentLayout *layout = document->documentLayout();
    const qreal height =
        layout->blockBoundingRect(kept).top() - layout->blockBoundingRect(first).top();
    QTextCursor cursor(document);
    cursor.setPosition(kept.position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    return height;
}

/// Returns all lines, each with its arrival time in the given format before it.
QString joined(const QTextEdit *log, const QString &timeFormat)
{
    QString text;
    for (QTextBlock block = log->document()->begin(); block.isValid(); block = block.next()) {
        const LineData *data = dataOf(block);
        const QString time = data ? QLocale::c().toString(data->time, timeFormat) : QString();
        QString lines = data && !data->uncut.isNull() ? data->uncut : block.text();
        text += time + lines.replace(LineEnd, LineEnd + time) + LineEnd;
    }
    return text;
}

} // namespace

void textlog::prepare(QTextEdit *log)
{
    log->setUndoRedoEnabled(false);
    // A scroll bar that appears with a long list would cause a second layout at another width.
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
    std::vector<Line> lines;
    for (const QString &entry : entries.mid(qMax(0, entries.size() - KeptLines)))
        addEntry(&lines, entry);

    QTextDocument *document = log->document();
    QScrollBar *bar = log->verticalScrollBar();
    const int value = bar->value();
    // The end is visible if only the margin below the last line is out of view.
    const bool following = bar->maximum() - value <= document->documentMargin();

    QTextCursor cursor(document);
    cursor.movePosition(QTextCursor::End);
    const int first = document->isEmpty() ? 0 : document->blockCount();
    insertLines(cursor, lines);
    attachData(document->findBlockByNumber(first), lines);
    const qreal dropped = dropOldLines(document);
    bar->setValue(following ? bar->maximum() : value - qRound(dropped));
}

QString textlog::fullText(const QTextEdit *log)
{
    return joined(log, QString()).chopped(1);
}

QString textlog::timedText(const QTextEdit *log)
{
    return joined(log, QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz  "));
}
