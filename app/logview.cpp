#include "app/logview.h"

#include "app/finddialog.h"
#include "data/wholefile.h"
#include "widgets/textlog.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMenu>

#include <memory>

LogView::LogView(QWidget *parent)
    : QTextEdit(parent)
{
    textlog::prepare(this);
    createAction(tr("Copy All"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C), SLOT(copyAll()));
    createAction(tr("Find…"), QKeySequence::Find, SLOT(openFind()));
    createAction(tr("Save As…"), QKeySequence::Save, SLOT(saveAs()));
}

void LogView::createAction(const QString &text, const QKeySequence &key, const char *slot)
{
    auto *action = new QAction(text, this);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, SIGNAL(triggered()), this, slot);
    addAction(action);
}

void LogView::contextMenuEvent(QContextMenuEvent *event)
{
    const std::unique_ptr<QMenu> menu(createStandardContextMenu(event->pos()));
    menu->addSeparator();
    menu->addActions(actions());
    menu->exec(event->globalPos());
}

/// Opens the context menu even while the log is disabled, as the messages are without a connection.
bool LogView::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ContextMenu || isEnabled())
        return QTextEdit::viewportEvent(event);
    contextMenuEvent(static_cast<QContextMenuEvent *>(event));
    return true;
}

void LogView::copyAll()
{
    QGuiApplication::clipboard()->setText(textlog::fullText(this));
}

void LogView::openFind()
{
    if (!findDialog)
        findDialog = new FindDialog(this);
    findDialog->begin(textCursor().selectedText());
}

void LogView::saveAs()
{
    const QString path = QFileDialog::getSaveFileName(window(), tr("Save Log"),
                                                      QCoreApplication::applicationDirPath() +
                                                          QStringLiteral("/log.txt"),
                                                      tr("Text files (*.txt)"));
    if (!path.isEmpty() && !writeWholeFile(path, textlog::timedText(this).toUtf8()))
        textlog::append(this, tr("Fail to save the log：%1").arg(path));
}
