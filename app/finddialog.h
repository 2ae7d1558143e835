#pragma once

#include <QDialog>
#include <QTextDocument>

class QCheckBox;
class QLabel;
class QLineEdit;
class QTextEdit;

/// Finds a text in a log, whose window is this dialog's parent and stays usable meanwhile. From an
/// end of the log the search goes on at the other one.
class FindDialog : public QDialog
{
    Q_OBJECT

public:
    explicit FindDialog(QTextEdit *log);

    /// Shows the dialog, with this text to be found unless it is empty or more than a line.
    void begin(const QString &text);

private slots:
    void findNextBtnClickAct();
    void findPreviousBtnClickAct();

private:
    void find(QTextDocument::FindFlags direction);

    QTextEdit *log;
    QLineEdit *findEdit;
    QCheckBox *caseCheckBox;
    QLabel *resultLabel;
};
