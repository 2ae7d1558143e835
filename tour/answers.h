#pragma once

#include "tour/console.h"

/// Answers to the standard dialogs, and what other answers are made of.
namespace answers {

Answer number(int value);
Answer text(const QString &text);
Answer yes();
Answer cancel();
/// Of a file dialog.
Answer file(const QString &path);

/// Controls of a dialog, found by their object names; one that does not exist ends the program.
void type(QWidget *dialog, const char *field, const QString &text);
void click(QWidget *dialog, const char *button);
/// Presses a button that writes a file beside the program, and takes that file to `target`, which
/// must not exist. What stood there under its name before stands there again afterwards.
void clickExport(QWidget *dialog, const char *button, const QString &fileName,
                 const QString &target);
/// Goes on with the window's events until the condition holds, for some seconds at most.
void waitFor(const std::function<bool()> &condition);

} // namespace answers
