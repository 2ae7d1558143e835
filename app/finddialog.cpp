#include "app/finddialog.h"

#include "widgets/controls.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QLineEdit>
#include <QTextEdit>

namespace {

constexpr int EditWidth = 260;

} // namespace

FindDialog::FindDialog(QTextEdit *searchedLog)
    : QDialog(searchedLog->window()), // the log may be disabled while this is open
      log(searchedLog),
      findEdit(new QLineEdit),
      caseCheckBox(new QCheckBox(tr("Match case"))),
      resultLabel(new QLabel)
{
    setWindowTitle(tr("Find in %1").arg(log->accessibleName()));
    findEdit->setObjectName(QStringLiteral("findEdit"));
    findEdit->setAccessibleName(tr("Text to find"));
    findEdit->setMinimumWidth(EditWidth);
    resultLabel->setObjectName(QStringLiteral("findResultLabel"));

    auto *options = new QHBoxLayout;
    options->addWidget(caseCheckBox);
    options->addStretch();
    options->addWidget(resultLabel);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(
        controls::button(tr("Find Previous"), QSize(), this, SLOT(findPreviousBtnClickAct())));
    QPushButton *next =
        controls::button(tr("Find Next"), QSize(), this, SLOT(findNextBtnClickAct()));
    next->setDefault(true);
    buttons->addWidget(next);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(findEdit);
    layout->addLayout(options);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void FindDialog::begin(const QString &text)
{
    if (!text.isEmpty() && !text.contains(QChar::ParagraphSeparator))
        findEdit->setText(text);
    findEdit->selectAll();
    findEdit->setFocus();
    resultLabel->clear();
    show();
    activateWindow();
}

void FindDialog::findNextBtnClickAct()
{
    find({});
}

void FindDialog::findPreviousBtnClickAct()
{
    find(QTextDocument::FindBackward);
}

void FindDialog::find(QTextDocument::FindFlags direction)
{
    QTextDocument::FindFlags flags = direction;
    flags.setFlag(QTextDocument::FindCaseSensitively, caseCheckBox->isChecked());
    const QTextDocument *lines = log->document();
    const QString text = findEdit->text();
    QTextCursor found = lines->find(text, log->textCursor(), flags);
    if (found.isNull()) {
        QTextCursor end(log->document());
        end.movePosition(direction ? QTextCursor::End : QTextCursor::Start);
        found = lines->find(text, end, flags);
    }
    resultLabel->setText(found.isNull() ? tr("Not found.") : QString());
    if (found.isNull())
        return;
    found.setKeepPositionOnInsert(true); // lines that arrive later stay unselected
    log->setTextCursor(found);
}
