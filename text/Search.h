#pragma once

#include <QString>

/// The text with each code point in its one-to-one Unicode case folding: as many code units as before.
QString foldedCase(QStringView text);

/// The text with every occurrence of `folded` (a text of `foldedCase`) replaced, from the front, whatever its
/// case; what was put in is not looked at again. An empty `folded` occurs nowhere.
QString replacingFolded(const QString &text, const QString &folded, const QString &replacement);

/// True if `other` occurs in the text, whatever its case. An absent (null) or empty `other` never does.
bool containsString(const QString &text, const QString &other);

/// How a text is looked for.
enum class SearchOption { Literal, CaseInsensitive };

/// The text with every occurrence of `target` replaced, from the front; what was put in is not looked at
/// again. The text itself if `target` is absent (null), empty or not found; an absent `replacement` is an
/// empty one. Case folds one to one. Any thread.
QString stringByReplacingOccurrencesOfStringWithStringOptions(const QString &text, const QString &target,
                                                              const QString &replacement,
                                                              SearchOption option);
