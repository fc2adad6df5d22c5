#include "ctl/NamesReport.h"

#include "ctl/RowText.h"
#include "scanners/InconNameController.h"
#include "values/Keys.h"

NamesReport::NamesReport(const Dictionary &nameRow)
    : row(nameRow),
      isArtist(row.value(keys::inconType).toText() == keys::RKIsArtistMatched.text()),
      nameKey(InconNameController::displayKeyOf(row)) {}

Value NamesReport::briefly(const Dictionary &song) const {
  const Value &pid = song.value(keys::PersistentID);
  if (!pid.isNull()) return pid;
  const Dictionary names = Dictionary::make();
  names.set(keys::Artist, song.value(keys::Artist));
  if (!isArtist) names.set(keys::Album, song.value(keys::Album));
  return names;
}

void NamesReport::writeJson(JsonWriter *json) const {
  json->beginObject();
  json->member(u"type", QString::fromLatin1(isArtist ? "artist" : "album"));
  json->member(u"preferred", row.value(keys::inconPref));
  json->key(u"songs");
  json->beginArray();
  for (const Value &song : row.value(keys::inconSongs).toArray()) json->value(briefly(song.toDictionary()));
  json->endArray();
  json->endObject();
}

std::vector<NamesReport::Spelling> NamesReport::spellings() const {
  std::vector<Spelling> found;
  for (const Value &value : row.value(keys::inconSongs).toArray()) {
    const Dictionary &song = value.toDictionary();
    const QString &text = song.value(nameKey).toText();
    auto place = std::find_if(found.begin(), found.end(), [&](const Spelling &s) { return s.text == text; });
    if (place == found.end()) place = found.insert(place, {text, 0});
    // What was added for the sake of a spelling alone holds nothing but names.
    const qsizetype names = isArtist ? 1 : 2;
    if (song.size() > names) ++place->songs;
  }
  return found;
}

void NamesReport::print(Terminal &terminal) const {
  const Dictionary &first = row.value(keys::inconSongs).toArray().at(0).toDictionary();
  terminal.print(isArtist
                     ? QStringLiteral("Artist")
                     : QStringLiteral("Album by ") + rowText::textOf(first, keys::Artist, "(no artist)"));
  const QString &preferred = row.value(keys::inconPref).toText();
  std::vector<std::pair<QString, qsizetype>> lines;
  qsizetype width = 0;
  for (const Spelling &spelling : spellings()) {
    const QString text = spelling.text.isEmpty() ? QStringLiteral("(no name)") : printable(spelling.text);
    lines.emplace_back(spelling.text == preferred ? u'[' + text + u']' : u' ' + text + u' ', spelling.songs);
    width = qMax(width, lines.back().first.size());
  }
  for (const auto &[text, songs] : lines) {
    const QString count = songs == 0 ? QStringLiteral("no song") : rowText::counted(songs, "song", "songs");
    terminal.print(QStringLiteral("  ") + text.leftJustified(width) + QStringLiteral("  ") + count);
  }
  terminal.print({});
}
