#pragma once

#include <QStringList>

class QTextEdit;

/// The one way into a log of the window. Texts are shown literally: markup or placeholders in what
/// a terminal or a file name brings have no effect.
namespace textlog {

/// The newest lines, and characters, that a log is sure to keep; older ones go in chunks. The
/// characters of a line that is shown cut and kept whole count in both of its forms.
constexpr int KeptLines = 50000;
constexpr int KeptCharacters = 5000000;

/// The most that is shown of one entry; an ellipsis takes the place of what is beyond. A line's
/// layout can take a time that grows with the square of its length: up to 10 ms for 1024 characters
/// of both directions.
constexpr int MaxLineLength = 1024;
constexpr int MaxEntryLines = 1000;
constexpr int MaxShownLength = 8192; ///< the line that exceeds it is shown as well
/// The most that is kept of one entry.
constexpr int MaxEntryLength = 65536;

/// Makes a text edit a log: read-only, without undo history, leaving the Tab key to the window.
void prepare(QTextEdit *log);

/// Control and bidirectional characters are shown as U+FFFD. Every line but the first of an entry
/// is indented, so that no text can pass for another entry. The log follows its end if that is in
/// sight.
void append(QTextEdit *log, const QString &entry);
/// Many entries at the price of one edit, the newest if there are more than a log keeps; no
/// entries, no change.
void append(QTextEdit *log, const QStringList &entries);

/// All lines, also those parts that are too long to be shown.
QString fullText(const QTextEdit *log);
/// The same, each line with the local time at which it was appended, "2026-11-23 12:00:01.234  ",
/// before it. The log itself does not show these times.
QString timedText(const QTextEdit *log);

} // namespace textlog
