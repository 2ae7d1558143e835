#pragma once

#include <QTextEdit>

class FindDialog;

/// A log of the window. Its context menu has Qt's entries and those that let the log leave the
/// window; they have keys of their own while the log has the focus.
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
    /// Into a UTF-8 file, with the time at which each line arrived. A failure is told in this log.
    void saveAs();

private:
    void createAction(const QString &text, const QKeySequence &key, const char *slot);

    FindDialog *findDialog = nullptr;
};
