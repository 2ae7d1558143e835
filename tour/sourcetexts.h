#pragma once

#include <QHash>
#include <QRegularExpression>

#include <vector>

/// Finds out what a text that the console shows in another language is in the language of the code,
/// in which the tour's steps are told.
class SourceTexts
{
public:
    /// Knows the texts of one language besides, as "zh_CN". False if there are none.
    bool load(const QString &language);

    /// More than one where texts are spelt differently in the code only; the text itself where it
    /// is none of those.
    QStringList sourcesOf(const QString &shown) const;

private:
    struct Form
    {
        QRegularExpression shown; ///< as a whole; captures what stands for the placeholders
        QStringList order;        ///< of the placeholders in the translation
        QString source;
    };

    void add(const QString &source, const QString &translation);
    QStringList filledIn(const QString &shown) const;

    QMultiHash<QString, QString> plain;
    std::vector<Form> forms; ///< the longest first
    mutable QHash<QString, QStringList> known;
};
