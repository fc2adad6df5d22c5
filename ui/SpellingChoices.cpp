#include "ui/SpellingChoices.h"

#include <QHash>

#include "scanners/InconNameController.h"
#include "text/Whitespace.h"
#include "values/Keys.h"

namespace {

/// A name that was only added to choose from stands in a dictionary with nothing but names.
bool isSong(const Dictionary &song) {
  return std::any_of(song.begin(), song.end(), [](const DictionaryEntry &entry) {
    return entry.key != keys::Artist && entry.key != keys::Album;
  });
}

/// What people see of a name: composed, each white space a blank.
QString asSeen(const QString &name) {
  QString seen = name.normalized(QString::NormalizationForm_C);
  std::replace_if(
      seen.begin(), seen.end(), [](QChar unit) { return unit.isSpace(); }, QChar(u' '));
  return seen;
}

/// The name with separate accents on dotted circles and uncommon blanks as boxes.
QString withVisibleParts(const QString &name) {
  QString visible;
  for (const QChar unit : name) {
    if (unit.isMark()) visible += QChar(0x25CC);
    visible += unit.isSpace() && unit != u' ' ? QChar(0x237D) : unit;
  }
  return visible;
}

void tellLookAlikesApart(std::vector<SpellingChoice> &choices) {
  QHash<QString, int> alike;
  for (const SpellingChoice &choice : choices) ++alike[asSeen(choice.visibleName)];
  for (SpellingChoice &choice : choices) {
    if (alike.value(asSeen(choice.visibleName)) > 1)
      choice.visibleName = withVisibleParts(choice.visibleName);
    if (choice.name != trimmedOfWhitespace(choice.name))
      choice.visibleName = u'"' + choice.visibleName + u'"';
  }
}

}  // namespace

std::vector<SpellingChoice> spellingChoicesOf(const Dictionary &row) {
  std::vector<SpellingChoice> choices;
  const Key key = InconNameController::displayKeyOf(row);
  const Value &preferred = row.value(keys::inconPref);
  const Array &songs = row.value(keys::inconSongs).toArray();
  QHash<QString, size_t> places;
  for (qsizetype i = songs.size() - 1; i >= 0; --i) {
    const Dictionary &song = songs.at(i).toDictionary();
    const Value &name = song.value(key);
    if (!name.isText()) continue;
    const auto place = places.constFind(name.toText());
    const size_t at = place == places.constEnd() ? choices.size() : *place;
    if (at == choices.size()) {
      places.insert(name.toText(), at);
      choices.push_back({name.toText(), stringWithVisibleZeroWidthCharacters(name.toText()), qint32(i), 0,
                         preferred.isText() && preferred.toText() == name.toText()});
    }
    if (isSong(song)) ++choices[at].songs;
  }
  tellLookAlikesApart(choices);
  return choices;
}

std::optional<SpellingChoice> choiceAfterPreferred(const std::vector<SpellingChoice> &choices) {
  const auto preferred = std::find_if(choices.begin(), choices.end(),
                                      [](const SpellingChoice &choice) { return choice.isPreferred; });
  if (preferred == choices.end()) return choices.empty() ? std::nullopt : std::optional(choices.front());
  if (choices.size() < 2) return {};
  return preferred + 1 == choices.end() ? choices.front() : *(preferred + 1);
}
