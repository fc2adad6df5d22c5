#include "platform/keeper/RecordItems.h"

#include <span>

#include "platform/keeper/StoreSchema.h"
#include "values/Keys.h"

namespace {

/// A power of two; more names than most libraries have artists and albums.
constexpr size_t kKnownTexts = 32'768;

using Item = LibraryMediaItem;

template <auto Field>
void setNumber(Item &item, qint64 number) {
  item.*Field = static_cast<std::remove_reference_t<decltype(item.*Field)>>(number);
}

template <auto Field>
void setAmount(Item &item, qint64 number) {
  setNumber<Field>(item, qMax<qint64>(0, number));
}

struct TextKey {
  Key key;
  QString Item::*field;
  bool repeats;
};

// The tables are made when they are first asked for: before main the keys may not be there yet.

std::span<const TextKey> textKeys() {
  static const TextKey known[] = {
      {keys::Artist, &Item::artistName, true},
      {keys::SortArtist, &Item::artistSortName, true},
      {keys::Album, &Item::albumTitle, true},
      {keys::SortAlbum, &Item::albumSortTitle, true},
      {keys::AlbumArtist, &Item::albumArtist, true},
      {keys::SortAlbumArtist, &Item::albumSortAlbumArtist, true},
      {keys::Composer, &Item::composer, true},
      {keys::SortComposer, &Item::sortComposer, true},
      {keys::Genre, &Item::genre, true},
      {keys::Kind, &Item::kind, true},
      {keys::ContentRating, &Item::contentRating, true},
      {keys::Name, &Item::title, true},
      {keys::SortName, &Item::sortTitle, true},
      {keys::Comments, &Item::comments, true},
      {keys::Location, &Item::location, false},
  };
  return known;
}

using DateKey = std::pair<Key, std::optional<Date> Item::*>;

std::span<const DateKey> dateKeys() {
  static const DateKey known[] = {
      {keys::DateAdded, &Item::addedDate},     {keys::DateModified, &Item::modifiedDate},
      {keys::ReleaseDate, &Item::releaseDate}, {keys::PlayDateUTC, &Item::lastPlayedDate},
      {keys::SkipDate, &Item::skipDate},
  };
  return known;
}

using NumberKey = std::pair<Key, void (*)(Item &, qint64)>;

std::span<const NumberKey> numberKeys() {
  static const NumberKey known[] = {
      {keys::TrackCount, setAmount<&Item::albumTrackCount>},
      {keys::DiscNumber, setAmount<&Item::albumDiscNumber>},
      {keys::DiscCount, setAmount<&Item::albumDiscCount>},
      {keys::TotalTime, setAmount<&Item::totalTime>},
      {keys::Year, setAmount<&Item::year>},
      {keys::TrackNumber, setAmount<&Item::trackNumber>},
      {keys::BitRate, setAmount<&Item::bitrate>},
      {keys::SampleRate, setAmount<&Item::sampleRate>},
      {keys::PlayCount, setAmount<&Item::playCount>},
      {keys::SkipCount, setAmount<&Item::skipCount>},
      {keys::Rating, setNumber<&Item::rating>},
      {keys::Size, setAmount<&Item::fileSize>},
  };
  return known;
}

Item::LocationType locationTypeOf(int flags) {
  if (flags & storeSchema::kHasFile) return Item::LocationType::File;
  if (flags & storeSchema::kIsAddress) return Item::LocationType::Url;
  return flags & storeSchema::kIsRemote ? Item::LocationType::Remote : Item::LocationType::Unknown;
}

}  // namespace

RecordItems::Target RecordItems::targetOf(Key key) {
  Target target;
  for (const TextKey &text : textKeys()) {
    if (text.key != key) continue;
    target.kind = text.repeats ? Target::Kind::SharedText : Target::Kind::Text;
    target.text = text.field;
    target.place = size_t(&text - textKeys().data());
  }
  for (const auto &[known_, field] : dateKeys()) {
    if (known_ != key) continue;
    target.kind = Target::Kind::Date;
    target.date = field;
  }
  for (const auto &[known_, set] : numberKeys()) {
    if (known_ != key) continue;
    target.kind = Target::Kind::Number;
    target.number = set;
  }
  return target;
}

void RecordItems::setKeys(const RecordKeys &keys) {
  targets.clear();
  for (quint32 number = 0; number < keys.size(); ++number) targets.push_back(targetOf(keys.key(number)));
  lastTexts.resize(textKeys().size());
  known.resize(kKnownTexts);
}

const LibraryMediaItem &RecordItems::item(quint64 persistentID, int flags, QByteArrayView record) {
  made = {};
  made.persistentID = persistentID;
  made.locationType = locationTypeOf(flags);
  made.albumIsCompilation = flags & storeSchema::kCompilation;
  made.isVideo = flags & storeSchema::kHasVideo;
  RecordCursor entry(record);
  while (entry.next()) take(entry);
  return made;
}

void RecordItems::take(const RecordCursor &entry) {
  if (entry.keyNumber() >= targets.size()) return;
  const Target &target = targets[entry.keyNumber()];
  switch (target.kind) {
    case Target::Kind::Nothing:
      break;
    case Target::Kind::Text:
      if (entry.isText()) made.*target.text = entry.text();
      break;
    case Target::Kind::SharedText:
      if (entry.isText()) made.*target.text = shared(entry, lastTexts[target.place]);
      break;
    case Target::Kind::Date:
      if (entry.type() == RecordCursor::Type::Date) made.*target.date = Date{entry.real()};
      break;
    case Target::Kind::Number:
      target.number(made, entry.integer());
      break;
  }
}

const QString &RecordItems::shared(const RecordCursor &entry, KnownText &last) {
  const QByteArrayView bytes = entry.payload();
  const auto isIt = [&](const KnownText &text) { return text.type == entry.type() && text.bytes == bytes; };
  // Tracks of one album stand together.
  if (isIt(last)) return last.text;
  KnownText &slot = known[qHash(bytes) & (kKnownTexts - 1)];
  if (!isIt(slot)) slot = {bytes.toByteArray(), entry.type(), entry.text()};
  last = slot;
  return last.text;
}
