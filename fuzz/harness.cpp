#include "fuzz/harness.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QPushButton>

void harness::prepareApplication()
{
    if (QCoreApplication::instance())
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "fuzz";
    static char *argv[] = {name, nullptr};
    new QApplication(argc, argv); // never destroyed, like all static objects of the targets
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
}

QByteArray harness::reply(const uint8_t *data, size_t size)
{
    const size_t following = size + 1;
    QByteArray bytes = QByteArray::fromHex("EAC5");
    for (const int shift : {16, 8, 0})
        bytes.append(static_cast<char>(following >> shift));
    bytes.append('\0'); // status
    return bytes.append(reinterpret_cast<const char *>(data), static_cast<int>(size));
}

void harness::click(const QWidget &dialog, const char *button)
{
    dialog.findChild<QPushButton *>(QLatin1String(button))->click();
    QCoreApplication::sendPostedEvents(); // which would accumulate
}
