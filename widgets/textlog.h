#pragma once

#include <QStringList>

class QTextEdit;

/// All lines of the window's logs are appended here. Texts are shown literally: markup and
/// placeholders in the texts of a terminal or in file names have no effect.
namespace textlog {

/// The number of newest lines and characters that a log always keeps; older lines are removed in
/// chunks. A line that is shown cut and kept in full counts with the characters of both forms.
constexpr int KeptLines = 50000;
constexpr int KeptCharacters = 5000000;

/// The longest line shown, in characters; longer lines end in an ellipsis. The time to lay out a
/// line can grow with the square of its length: up to 10 ms for 1024 characters of both directions.
constexpr int MaxLineLength = 1024;
/// The largest number of lines and characters shown of one entry; an ellipsis replaces the rest.
/// The line that exceeds the number of characters is still shown.
constexpr int MaxEntryLines = 1000;
constexpr int MaxShownLength = 8192;
/// The largest number of characters kept of one entry.
constexpr int MaxEntryLength = 65536;

/// Turns a text edit into a log: read-only and without undo history. The Tab key leaves it.
void prepare(QTextEdit *log);

/// Control and bidirectional characters are shown as U+FFFD. All lines of an entry but the first
/// are indented, so that no text can be mistaken for another entry. The log scrolls to its new end
/// if its end was visible.
void append(QTextEdit *log, const QString &entry);
/// Appends many entries in one edit; only the newest if there are more than a log keeps.
void append(QTextEdit *log, const QStringList &entries);

/// Returns all lines, including the parts that are too long to be shown.
QString fullText(const QTextEdit *log);
/// The same, with the local time of its arrival before each line: "2026-11-23 12:00:01.234  ". The
/// log itself does not show these times.
QString timedText(const QTextEdit *log);

} // namespace textlog
