#include "app/language.h"

#include <QCoreApplication>
#include <QTranslator>

namespace {

/// The translator belongs to the application.
bool install(const QLocale &locale, const char *texts)
{
    auto *translator = new QTranslator(qApp);
    const QString folder = QCoreApplication::applicationDirPath() + QStringLiteral("/translations");
    if (translator->load(locale, QLatin1String(texts), QStringLiteral("_"), folder))
        return QCoreApplication::installTranslator(translator);
    delete translator;
    return false;
}

} // namespace

void useLanguage(const QStringList &languages)
{
    // The terminal and the names of files require ASCII digits.
    QLocale::setDefault(QLocale::c());
    for (const QString &language : languages) {
        QLocale locale(language);
        if (locale.script() == QLocale::SimplifiedHanScript)
            locale = QLocale(QLocale::Chinese, QLocale::China); // one translation for all countries
        if (locale.language() == QLocale::English)
            return;
        if (install(locale, "quirel")) {
            install(locale, "qtbase");
            return;
        }
    }
}
