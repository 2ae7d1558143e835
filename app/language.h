#pragma once

#include <QLocale>
#include <QStringList>

/// Installs the translations of the application and of Qt in the first of the languages (such as
/// "zh-CN", in order of preference) that has them; English is the language of the code. They are
/// loaded from `translations/` beside the executable. Numbers and dates in the controls look the
/// same in every language. Dates are converted to text by QLocale::c(), since QDate::toString()
/// uses the digits of the system's locale.
void useLanguage(const QStringList &languages = QLocale::system().uiLanguages());
