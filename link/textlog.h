#pragma once

#include <QStringList>

class QTextEdit;

/// The one way into a log of the window. Texts are shown literally: markup or placeholders in what
/// a terminal or a file name brings have no effect.
namespace textlog {

/// The newest lines that a log is sure to keep; older ones go in chunks.
constexpr int KeptLines = 50000;

/// Longest line shown; the rest of a longer one gives way to an ellipsis. A line without blanks
/// costs a layout time that grows with the square of its length.
constexpr int MaxLineLength = 4096;

/// Makes a text edit a log: read-only, without undo history, leaving the Tab key to the window.
void prepare(QTextEdit *log);

void append(QTextEdit *log, const QString &line);
/// Many lines at the price of one edit; no lines, no change.
void append(QTextEdit *log, const QStringList &lines);

} // namespace textlog
