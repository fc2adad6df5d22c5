#include "audio/AudioInfoTag.h"
#include "support/BMLog.h"
#include "text/Simplified.h"

namespace {

/// The text with its numbers in brackets replaced by the genres that they name, up to the first that names
/// none.
QString withNumbersExpanded(QString text) {
  for (qsizetype open = text.indexOf(u'('); open >= 0; open = text.indexOf(u'(')) {
    const qsizetype close = text.indexOf(u')');
    if (close <= open + 1) break;
    const QString between = text.mid(open + 1, close - open - 1);
    const qint64 number = Value(between).toInteger();
    if (number == 0 && between != u"0") break;
    QString name = AudioInfoTag::genreForIndex(number);
    if (name.isNull()) break;
    if (close < text.size() - 2) name += u'/';
    text.replace(open, close - open + 1, name);
  }
  return text;
}

bool hasDigitsOnly(const QString &text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

}  // namespace

const QStringList &AudioInfoTag::allGenres() {
  static const QStringList none;
  return none;
}

QString AudioInfoTag::genreForIndex(qint64 index) {
  return index >= 0 && index < allGenres().size() ? allGenres()[index] : QString();
}

qint64 AudioInfoTag::indexOfGenre(const QString &name) {
  const QString wanted = name.trimmed();
  for (qsizetype index = 0; index < allGenres().size(); ++index) {
    if (allGenres()[index].compare(wanted, Qt::CaseInsensitive) == 0) return index;
  }
  return kNotFound;
}

QString AudioInfoTag::standardizedGenreFrom(const QString &text) {
  if (text.size() < 2) return {};
  static const QStringList simplifiedGenres = [] {
    QStringList list;
    for (const QString &genre : allGenres()) list.append(simplified(genre));
    return list;
  }();
  const QString simple = simplified(text);
  QString best;
  for (qsizetype index = simplifiedGenres.size() - 1; index >= 0; --index) {
    const QString &genre = allGenres()[index];
    if (genre.size() > best.size() && simple.contains(simplifiedGenres[index])) best = genre;
  }
  BMLog("standardized '%@' -> %@", text, best);
  return best;
}

QString AudioInfoTag::expandedGenres(const QString &stored) {
  constexpr qsizetype kMostNames = 1 << 15;  // more would take many times their text in memory
  if (stored.isNull()) return {};
  if (stored.count(u'/') > kMostNames) return stored;
  QString text = withNumbersExpanded(stored);
  if (hasDigitsOnly(stored)) {
    const QString named = genreForIndex(Value(text).toInteger());
    if (!named.isNull()) text = named;
  }
  QStringList names = text.split(u'/');
  names.removeDuplicates();
  const QString joined = names.join(u'/');
  return joined.isNull() ? u""_qs : joined;
}
