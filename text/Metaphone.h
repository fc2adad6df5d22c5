#pragma once

#include <QString>

/// The sound key of one word: names that sound alike have one key. Lower-case ASCII letters, the digit "0"
/// for the sound of "th", and digits and punctuation as themselves; blanks inside the word do not count.
/// Empty for a text without anything but blanks. Other scripts are keyed by their Latin transliteration. The
/// rules are this system's own and close to Metaphone. Any thread.
QString metaphoneWord(const QString &word);

/// The sound key of a phrase: the keys of its words with the blanks between them, a run of blanks inside
/// included. White space at both ends does not count, line breaks do. With `withoutMinorWords` the
/// `minorWords` are taken out first. Any thread.
QString metaphoneWithoutMinorWords(const QString &phrase, bool withoutMinorWords);

/// The sound key of a phrase with all its words.
QString metaphone(const QString &phrase);
/// The sound key of a phrase without its minor words.
QString metaphoneNoMinorWords(const QString &phrase);
