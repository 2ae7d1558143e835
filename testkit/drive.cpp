#include "testkit/drive.h"

#include <QAbstractButton>
#include <QMetaProperty>
#include <QTextEdit>
#include <QtTest>

namespace {

constexpr int Timeout = 8000; // ms

int failures = 0;

} // namespace

void drive::stayOffScreen()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

void drive::click(const QWidget *window, const QByteArray &button)
{
    QTest::mouseClick(find<QAbstractButton>(window, button), Qt::LeftButton);
}

void drive::clickCaption(const QWidget *window, const QString &caption)
{
    for (QAbstractButton *button : window->findChildren<QAbstractButton *>()) {
        if (button->text().remove(QLatin1Char('&')) == caption) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
    fail(QStringLiteral("There is no button ") + caption);
}

QVariant drive::value(const QWidget *window, const QByteArray &control)
{
    const auto *widget = find<QWidget>(window, control);
    return widget->metaObject()->userProperty().read(widget);
}

void drive::setValue(const QWidget *window, const QByteArray &control, const QVariant &value)
{
    auto *widget = find<QWidget>(window, control);
    if (!widget->metaObject()->userProperty().write(widget, value))
        fail(QLatin1String(control) + QStringLiteral(" takes no such value"));
}

void drive::type(const QWidget *window, const QByteArray &field, const QString &text)
{
    auto *widget = find<QWidget>(window, field);
    widget->setFocus();
    QTest::keySequence(widget, QKeySequence::SelectAll);
    QTest::keyClicks(widget, text);
}

QStringList drive::lines(const QTextEdit *log)
{
    return log->document()->isEmpty() ? QStringList() : log->toPlainText().split(QLatin1Char('\n'));
}

void drive::waitFor(const std::function<bool()> &condition)
{
    if (!QTest::qWaitFor(condition, Timeout))
        fail(QStringLiteral("A condition did not become true in time."));
}

void drive::fail(const QString &reason)
{
    ++failures;
    if (QTest::currentTestFunction())
        QTest::qFail(qPrintable(reason), __FILE__, __LINE__);
    else
        qWarning("%s", qPrintable(reason));
}

int drive::failureCount()
{
    return failures;
}
