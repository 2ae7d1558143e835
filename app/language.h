#pragma once

#include <QLocale>
#include <QStringList>

/// Gives the application its texts, and Qt's own, in the first of the languages (as "zh-CN", best
/// liked first) that there are texts in; English is the language of the code. They are looked for
/// in `translations/` beside the executable. Numbers and dates in the windows' controls look the
/// same in all of them; a date becomes text through QLocale::c(), since QDate::toString() takes its
/// digits from the system's locale.
void useLanguage(const QStringList &languages = QLocale::system().uiLanguages());
