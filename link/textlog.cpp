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

} // namespace

void textlog::prepare(QTextEdit *log)
{
    log->setReadOnly(true);
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
    QScrollBar *bar = log->verticalScrollBar();
    const bool following = bar->value() == bar->maximum();

    QTextDocument *document = log->document();
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    cursor.movePosition(QTextCursor::End);
    if (!document->isEmpty())
        cursor.insertBlock();
    cursor.insertText(lines.join(QLatin1Char('\n')), QTextCharFormat());
    dropOldLines(document);
    cursor.endEditBlock();

    if (following)
        bar->setValue(bar->maximum());
}
