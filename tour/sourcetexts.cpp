#include "tour/sourcetexts.h"

#include <QFile>
#include <QXmlStreamReader>

#include <algorithm>

bool SourceTexts::load(const QString &language)
{
    QFile file(QStringLiteral(":/translations/quirel_%1.ts").arg(language));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QXmlStreamReader xml(&file);
    QString source;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("source"))
            source = xml.readElementText();
        else if (xml.name() == QLatin1String("translation"))
            add(source, xml.readElementText());
    }
    std::stable_sort(forms.begin(), forms.end(), [](const Form &one, const Form &other) {
        return one.shown.pattern().size() > other.shown.pattern().size();
    });
    return !xml.hasError();
}

void SourceTexts::add(const QString &source, const QString &translation)
{
    if (translation.isEmpty())
        return;
    const QRegularExpression placeholder(QStringLiteral("%[1-9]"));
    QStringList order;
    for (auto matches = placeholder.globalMatch(translation); matches.hasNext();)
        order.append(matches.next().captured());
    if (order.isEmpty()) {
        plain.insert(translation, source);
        return;
    }
    QStringList parts;
    for (const QString &part : translation.split(placeholder))
        parts.append(QRegularExpression::escape(part));
    const QString pattern = parts.join(QStringLiteral("(.*)"));
    forms.push_back(
        {QRegularExpression(QRegularExpression::anchoredPattern(pattern)), order, source});
}

QStringList SourceTexts::sourcesOf(const QString &shown) const
{
    if (forms.empty())
        return {shown};
    if (!known.contains(shown))
        known.insert(shown, plain.contains(shown) ? plain.values(shown) : filledIn(shown));
    return known.value(shown);
}

/// Fills the source's placeholders with the shown values, or with their sources if those are texts
/// themselves.
QStringList SourceTexts::filledIn(const QString &shown) const
{
    QStringList sources;
    QString pattern;
    for (const Form &form : forms) {
        const QRegularExpressionMatch match = form.shown.match(shown);
        if (!match.hasMatch() || (!pattern.isEmpty() && pattern != form.shown.pattern()))
            continue;
        pattern = form.shown.pattern();
        QString source = form.source;
        for (int i = 0; i < form.order.size(); ++i) {
            const QString part = match.captured(i + 1);
            source.replace(form.order.at(i), plain.value(part, part));
        }
        sources.append(source);
    }
    return sources.isEmpty() ? QStringList(shown) : sources;
}
