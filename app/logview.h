#pragma once

#include <QTextEdit>

class FindDialog;

/// A log of the window. Its context menu has Qt's entries and those that copy, search and save the
/// log; their shortcuts work while the log has the focus.
class LogView : public QTextEdit
{
    Q_OBJECT

public:
    explicit LogView(QWidget *parent = nullptr);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private slots:
    void copyAll();
    void openFind();
    /// Writes a UTF-8 file with the arrival time of each line. Logs a failure in this log.
    void saveAs();

private:
    void createAction(const QString &text, const QKeySequence &key, const char *slot);

    FindDialog *findDialog = nullptr;
};
