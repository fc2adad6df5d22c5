#include "scanners/InconNameController.h"

#include <QSet>
#include <stdexcept>

#include "text/Characters.h"
#include "text/Simplified.h"
#include "text/Whitespace.h"
#include "values/Keys.h"

namespace {

const QString kArtistRow = QStringLiteral("RKIsArtistMatched");

/// A name of a track; none if it is absent or no text.
std::optional<QString> nameIn(const Dictionary &song, Key key) {
  const Value &name = song.value(key);
  if (!name.isText()) return {};
  return name.toText().isNull() ? QStringLiteral("") : name.toText();
}

const Array &songsOf(const Dictionary &row) {
  return row.value(keys::inconSongs).toArray();
}

bool hasName(const Array &songs, Key key, const QString &name) {
  for (const Value &song : songs) {
    if (nameIn(song.toDictionary(), key) == name) return true;
  }
  return false;
}

/// The spelling of a track's artist that stands in its "Album Artist" alone.
std::optional<QString> spellingOfAlbumArtist(const Dictionary &song, const NameKeyMethod &method) {
  const std::optional<QString> albumArtist = nameIn(song, keys::AlbumArtist);
  if (!albumArtist || albumArtist->isEmpty() || nameIn(song, keys::Artist) == albumArtist) return {};
  const std::optional<QString> key = nameIn(song, method.artistKey);
  return key && key == nameIn(song, method.albumArtistKey) ? albumArtist : std::nullopt;
}

void addSpellingsOfAlbumArtists(const Array &songs, const NameKeyMethod &method) {
  std::vector<QString> spellings;
  for (const Value &song : songs) {
    if (const auto spelling = spellingOfAlbumArtist(song.toDictionary(), method))
      spellings.push_back(*spelling);
  }
  for (const QString &spelling : spellings) {
    const Dictionary bare = Dictionary::make();
    bare.set(keys::Artist, spelling);
    songs.append(bare);
  }
}

/// The best written name among the songs; of equals the last song's. Each spelling is scored once: the last
/// song that has it stands for all.
std::optional<QString> bestNameOf(const Array &songs, Key key) {
  std::optional<QString> best;
  qint32 bestScore = -1;
  QSet<QString> scored;
  for (qsizetype i = songs.size() - 1; i >= 0; --i) {
    const std::optional<QString> name = nameIn(songs.at(i).toDictionary(), key);
    if (name && scored.contains(*name)) continue;
    if (name) scored.insert(*name);
    const qint32 score = name ? InconNameController::nameScore(*name) : 0;
    if (score <= bestScore) continue;
    bestScore = score;
    best = name;
  }
  return best;
}

bool isAsciiLetter(QChar unit) {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

bool isCapitalized(const QString &word) {
  const bool hasPrefix = word.size() >= 3 && (word.startsWith(u"O'") || word.startsWith(u"Mc"));
  const QString capitals = hasPrefix ? word.mid(2) : word;
  return capitals == capitalizedString(capitals);
}

bool isWellCapitalized(const QString &word, bool isOuter) {
  if (!isAsciiLetter(word.front())) return true;
  const QStringList &minor = InconNameController::uncapitalizedWords();
  if (!isOuter && minor.contains(word.toLower())) return minor.contains(word);
  return isCapitalized(word);
}

std::optional<QString> prefer(const Dictionary &row, const std::optional<QString> &name) {
  if (name && row.isMutable()) row.set(keys::inconPref, *name);
  return name;
}

}  // namespace

const QStringList &InconNameController::uncapitalizedWords() {
  static const QStringList words =
      QStringLiteral("a an the at by for in of on to up and as but it or nor").split(u' ');
  return words;
}

void InconNameController::setResources(const Dictionary &resources) {
  QHash<QString, OddName> table;
  const Array &artists = resources.value(keys::oddNameArtists).toArray();
  for (qsizetype i = artists.size() - 1; i >= 0; --i) {
    const QString artist = artists.at(i).toText(), key = simplified(artist);
    if (!key.isEmpty()) table.insert(key, {artist, {}});
  }
  const Dictionary &albumsOf = resources.value(keys::oddNameAlbums).toDictionary();
  for (const DictionaryEntry *entry = albumsOf.end(); entry != albumsOf.begin();) {
    --entry;
    OddName odd{entry->key.text(), {}};
    // The last of two with one key is the one that a search from the end would find.
    for (const Value &album : entry->value.toArray()) {
      if (album.isText()) odd.albums.insert(simplified(album.toText()), album.toText());
    }
    table.insert(simplified(odd.artist), odd);
  }
  exceptions = table;
}

Key InconNameController::displayKeyOf(const Dictionary &row) {
  return row.value(keys::inconType).toText() == kArtistRow ? keys::Artist : keys::Album;
}

std::optional<QString> InconNameController::exceptionFor(const Dictionary &row) const {
  const Dictionary &first = songsOf(row).at(0).toDictionary();
  const std::optional<QString> artist = nameIn(first, keys::Artist);
  if (!artist) return {};
  const auto odd = exceptions.constFind(simplified(*artist));
  if (odd == exceptions.constEnd()) return {};
  if (displayKeyOf(row) == keys::Artist) return odd->artist;
  const std::optional<QString> album = nameIn(first, keys::Album);
  if (!album || odd->albums.isEmpty()) return {};
  const auto name = odd->albums.constFind(simplified(*album));
  return name == odd->albums.constEnd() ? std::nullopt : std::optional(*name);
}

std::optional<QString> InconNameController::automaticallyChoosePreferredForDictionaryComparisonSelector(
    const Dictionary &row, const NameKeyMethod &method) const {
  const Key key = displayKeyOf(row);
  const Array songs = songsOf(row);
  if (key == keys::Artist && songs.isMutable()) addSpellingsOfAlbumArtists(songs, method);
  const std::optional<QString> exception = exceptionFor(row);
  if (!exception) return prefer(row, bestNameOf(songs, key));
  if (!hasName(songs, key, *exception) && songs.isMutable()) {
    const Dictionary bare = Dictionary::make();
    bare.set(keys::Artist, songs.at(0).toDictionary().value(keys::Artist));
    bare.set(key, *exception);
    songs.append(bare);
  }
  return prefer(row, exception);
}

std::optional<QString> InconNameController::userChoosePreferredForDictionaryUsingXPoint(
    const Dictionary &row, float x, const Layout &layout) const {
  const StyledText line = calculatedInconsistentAttributedStringForDictionary(row);
  const std::optional<qsizetype> unit = layout(line, x);
  const StyledRun *run = unit ? runAt(line, *unit) : nullptr;
  if (!run || !run->sourceIndex) return {};
  return userChoosePreferredForDictionaryUsingSong(row, *run->sourceIndex);
}

std::optional<QString> InconNameController::userChoosePreferredForDictionaryUsingSong(
    const Dictionary &row, qint32 songIndex) const {
  return prefer(row, nameIn(songsOf(row).at(songIndex).toDictionary(), displayKeyOf(row)));
}

StyledText InconNameController::calculatedInconsistentAttributedStringForDictionary(
    const Dictionary &row) const {
  const Key key = displayKeyOf(row);
  const Array &songs = songsOf(row);
  struct Shown {
    QString name;
    qint32 index;
  };
  std::vector<Shown> names;
  QSet<QString> seen;
  bool isQuoted = false;
  for (qsizetype i = songs.size() - 1; i >= 0; --i) {
    const std::optional<QString> name = nameIn(songs.at(i).toDictionary(), key);
    if (!name || seen.contains(*name)) continue;
    seen.insert(*name);
    names.push_back({*name, qint32(i)});
    isQuoted = isQuoted || name->contains(u',') || *name != trimmedOfWhitespace(*name);
  }

  StyledText text;
  if (key == keys::Album) {
    const auto artist = nameIn(songs.at(songs.size() - 1).toDictionary(), keys::Artist);
    if (artist) text.push_back({*artist + QStringLiteral(": "), false, {}});
  }
  const std::optional<QString> preferred = nameIn(row, keys::inconPref);
  for (const Shown &shown : names) {
    if (&shown != &names.front()) text.push_back({QStringLiteral(", "), false, {}});
    const QString quoted = isQuoted ? u'"' + shown.name + u'"' : shown.name;
    const bool isPreferred = preferred == shown.name;
    text.push_back({isPreferred ? u'[' + quoted + u']' : quoted, isPreferred, shown.index});
  }
  return text;
}

Dictionary InconNameController::preferredSongFromDictionary(const Dictionary &row) const {
  const Key key = displayKeyOf(row);
  const Array &songs = songsOf(row);
  const std::optional<QString> preferred = nameIn(row, keys::inconPref);
  for (qsizetype i = songs.size() - 1; preferred && i >= 0; --i) {
    const Dictionary &song = songs.at(i).toDictionary();
    if (nameIn(song, key) == preferred) return song;
  }
  throw std::out_of_range("no song has the preferred spelling");
}

qint32 InconNameController::nameScore(const QString &name) {
  if (name.isNull() || name != trimmedOfWhitespace(name) || containsZeroWidthCharacter(name) ||
      containsRedundantWhitespace(name))
    return 0;
  const QStringList words = name.split(u' ');
  qint32 points = 1;
  for (qsizetype i = 0; i < words.size(); ++i) {
    const bool isOuter = i == 0 || i == words.size() - 1;
    if (!words[i].isEmpty() && isWellCapitalized(words[i], isOuter)) ++points;
  }
  return qint32(name.size()) + points;
}
