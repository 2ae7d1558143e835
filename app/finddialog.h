#pragma once

#include <QDialog>
#include <QTextDocument>

class QCheckBox;
class QLabel;
class QLineEdit;
class QTextEdit;

/// Finds a text in a log. The parent is the log's window, which stays usable while the dialog is
/// open. At an end of the log the search continues from the other end.
class FindDialog : public QDialog
{
    Q_OBJECT

public:
    explicit FindDialog(QTextEdit *log);

    /// Shows the dialog. A text of one line becomes the text to find; any other leaves it
    /// unchanged.
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
