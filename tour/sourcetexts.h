#pragma once

#include <QHash>
#include <QRegularExpression>

#include <vector>

/// Translates texts that the console shows in another language back to the language of the source
/// code, in which the steps are written.
class SourceTexts
{
public:
    /// Loads the translations of a language such as "zh_CN". Returns false if there are none.
    bool load(const QString &language);

    /// Returns the sources of a shown text: several if source texts share a translation, the text
    /// itself if it is no translation.
    QStringList sourcesOf(const QString &shown) const;

private:
    struct Form
    {
        QRegularExpression shown; ///< matches the whole text and captures the placeholders' values
        QStringList order;        ///< of the placeholders in the translation
        QString source;
    };

    void add(const QString &source, const QString &translation);
    QStringList filledIn(const QString &shown) const;

    QMultiHash<QString, QString> plain;
    std::vector<Form> forms; ///< the longest pattern first
    mutable QHash<QString, QStringList> known;
};
