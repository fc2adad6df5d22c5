#pragma once

#include <QString>
#include <QStringList>

/// The words that do not tell two names apart: "a", "an", "and", "of", "the", "is", in this order.
const QStringList &minorWords();

/// The text without these words where they stand between blanks or at an end, whatever their case, and
/// without white space at its ends. One pass a word: of a run of one word every second stays.
QString stringWithoutWords(const QString &text, const QStringList &words);

/// "Beatles, The" as "The Beatles": a minor word behind the only ", " moves to the front. Other texts
/// unchanged.
QString normalizedString(const QString &text);
