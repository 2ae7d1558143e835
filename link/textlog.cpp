#include "link/textlog.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextEdit>

namespace {

// Removing from the front costs a new layout of what stays, so it is done rarely.
constexpr int DropChunk = 5000;

void dropOldLines(QTextDocument *document)
{
    const int surplus = document->blockCount() - textlog::KeptLines;
    if (surplus < DropChunk)
        return;
    QTextCursor cursor(document);
    cursor.setPosition(document->findBlockByNumber(surplus).position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

QString bounded(const QString &text)
{
    if (text.size() <= textlog::MaxLineLength)
        return text;
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString &line : lines) {
        if (line.size() > textlog::MaxLineLength)
            line = line.left(textlog::MaxLineLength) + QChar(0x2026);
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace

void textlog::prepare(QTextEdit *log)
{
    log->setUndoRedoEnabled(false);
    log->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    log->setTabChangesFocus(true);
}

void textlog::append(QTextEdit *log, const QString &line)
{
    append(log, QStringList(line));
}

void textlog::append(QTextEdit *log, const QStringList &lines)
{
    if (lines.isEmpty())
        return;
    QStringList text;
    for (const QString &line : lines)
        text.append(bounded(line));
    QScrollBar *bar = log->verticalScrollBar();
    const bool following = bar->value() == bar->maximum();

    QTextDocument *document = log->document();
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    cursor.movePosition(QTextCursor::End);
    if (!document->isEmpty())
        cursor.insertBlock();
    cursor.insertText(text.join(QLatin1Char('\n')), QTextCharFormat());
    dropOldLines(document);
    cursor.endEditBlock();

    if (following)
        bar->setValue(bar->maximum());
}
