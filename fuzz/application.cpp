/// Prepares the program of a fuzz target.

#include <QApplication>
#include <QLoggingCategory>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    new QApplication(*argc, *argv); // never destroyed, like all static objects of the targets
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    return 0;
}
