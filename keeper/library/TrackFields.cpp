#include "keeper/library/TrackFields.h"

#include <QDateTime>
#include <QHash>
#include <cmath>

#include "keeper/library/KeyEdits.h"
#include "keeper/library/Refusal.h"
#include "keeper/library/TrackFieldForms.h"
#include "values/Keys.h"

namespace {

using namespace trackForms;

constexpr qint64 kMost = 0x7fff'ffff;

// "Play Date" counts seconds of local time from the start of 1904.
qint64 secondsOfLocalTime(Date date) {
  constexpr qint64 kFrom1904ToUnix = 2'082'844'800;
  const qint64 unixSeconds = qint64(std::floor(date.toUnix()));
  return unixSeconds + QDateTime::fromSecsSinceEpoch(unixSeconds).offsetFromUtc() + kFrom1904ToUnix;
}

TrackField playedDate() {
  TrackField field = date(u"played date"_qs, keys::PlayDateUTC);
  field.write = [write = field.write](const ScriptValue &value, const KeyReader &reader) {
    KeyChanges changes = write(value, reader);
    changes.insert(changes.begin(), keyEdits::setNumber(keys::PlayDate, secondsOfLocalTime(value.date())));
    return changes;
  };
  return field;
}

// Newer libraries say "Favorited" where older ones say "Loved"; a change stays with the library's word.
TrackField favorited() {
  const auto read = [](const KeyReader &reader) -> ScriptValue {
    return reader(keys::Loved).toBool() || reader(keys::Favorited).toBool();
  };
  const auto write = [](const ScriptValue &value, const KeyReader &reader) -> KeyChanges {
    const std::optional<bool> given = flagOfValue(value);
    if (!given) throw refusal::unfit(u"favorited"_qs);
    const bool isNewer = !reader(keys::Favorited).isNull();
    return {keyEdits::setFlag(isNewer ? keys::Favorited : keys::Loved, *given),
            keyEdits::remove(isNewer ? keys::Loved : keys::Favorited)};
  };
  return {u"favorited"_qs, Key(), read, write};
}

const std::vector<std::pair<QString, Key>> &mediaKinds() {
  static const std::vector<std::pair<QString, Key>> kinds = {
      {u"music video"_qs, keys::MusicVideo}, {u"movie"_qs, keys::Movie},
      {u"tv show"_qs, keys::TVShow},         {u"podcast"_qs, keys::Podcast},
      {u"audiobook"_qs, keys::Audiobook},    {u"itunes u"_qs, keys::ITunesU}};
  return kinds;
}

TrackField mediaKind() {
  const auto read = [](const KeyReader &reader) -> ScriptValue {
    for (const auto &[term, key] : mediaKinds()) {
      if (reader(key).toBool()) return ScriptConstant{term};
    }
    return ScriptConstant{u"song"_qs};
  };
  const auto write = [](const ScriptValue &value, const KeyReader &) {
    const QString wanted = value.is(ScriptValue::Type::Constant) ? value.term() : QString();
    bool isKnown = wanted == u"song";
    KeyChanges changes;
    for (const auto &[term, key] : mediaKinds()) {
      changes.push_back(keyEdits::setFlag(key, term == wanted));
      isKnown = isKnown || term == wanted;
    }
    if (!isKnown) throw refusal::unfit(u"media kind"_qs);
    return changes;
  };
  return {u"media kind"_qs, Key(), read, write};
}

// The library keeps -255 to 255, scripts speak of -100 to 100.
TrackField volumeAdjustment() {
  constexpr double kLoudest = 255.0, kPercent = 100.0;
  const auto read = [](const KeyReader &reader) -> ScriptValue {
    return qint64(std::llround(double(reader(keys::VolumeAdjustment).toInteger()) * kPercent / kLoudest));
  };
  const auto write = [](const ScriptValue &value, const KeyReader &) -> KeyChanges {
    const std::optional<qint64> given = wholeOfValue(value);
    if (!given || std::abs(double(*given)) > kPercent) throw refusal::unfit(u"volume adjustment"_qs);
    const qint64 stored = std::llround(double(*given) * kLoudest / kPercent);
    return {keyEdits::setNumber(keys::VolumeAdjustment, stored)};
  };
  return {u"volume adjustment"_qs, keys::VolumeAdjustment, read, write};
}

// Without a place to stop a track plays to its end.
TrackField finish() {
  TrackField field = seconds(u"finish"_qs, keys::StopTime);
  field.key = Key();
  field.read = [](const KeyReader &reader) -> ScriptValue {
    const Value &stop = reader(keys::StopTime);
    return double((stop.isNull() ? reader(keys::TotalTime) : stop).toInteger()) / 1000.0;
  };
  field.write = [write = field.write](const ScriptValue &value, const KeyReader &reader) {
    KeyChanges changes = write(value, reader);
    Value &stop = changes.front().value;
    if (stop.toInteger() >= reader(keys::TotalTime).toInteger()) stop = Value();
    return changes;
  };
  return field;
}

TrackField timeText() {
  const auto read = [](const KeyReader &reader) -> ScriptValue {
    return durationText(reader(keys::TotalTime).toInteger() / 1000);
  };
  return {u"time"_qs, keys::TotalTime, read, {}};
}

std::vector<TrackField> names() {
  return {text(u"name"_qs, keys::Name),
          text(u"artist"_qs, keys::Artist),
          text(u"album artist"_qs, keys::AlbumArtist),
          text(u"album"_qs, keys::Album),
          text(u"composer"_qs, keys::Composer),
          text(u"genre"_qs, keys::Genre),
          text(u"grouping"_qs, keys::Grouping),
          text(u"comment"_qs, keys::Comments),
          text(u"description"_qs, keys::Description),
          text(u"long description"_qs, keys::LongDescription),
          text(u"category"_qs, keys::Category),
          text(u"show"_qs, keys::Series),
          text(u"episode id"_qs, keys::Episode),
          text(u"eq"_qs, keys::Equalizer),
          text(u"sort name"_qs, keys::SortName),
          text(u"sort artist"_qs, keys::SortArtist),
          text(u"sort album artist"_qs, keys::SortAlbumArtist),
          text(u"sort album"_qs, keys::SortAlbum),
          text(u"sort composer"_qs, keys::SortComposer),
          text(u"sort show"_qs, keys::SortSeries),
          text(u"work"_qs, keys::Work),
          text(u"movement"_qs, keys::MovementName)};
}

std::vector<TrackField> numbers() {
  return {whole(u"year"_qs, keys::Year, 0, 9999),
          whole(u"bpm"_qs, keys::BPM, 0, 32767),
          whole(u"track number"_qs, keys::TrackNumber, 0, 32767),
          whole(u"track count"_qs, keys::TrackCount, 0, 32767),
          whole(u"disc number"_qs, keys::DiscNumber, 0, 32767),
          whole(u"disc count"_qs, keys::DiscCount, 0, 32767),
          whole(u"movement number"_qs, keys::MovementNumber, 0, 32767),
          whole(u"movement count"_qs, keys::MovementCount, 0, 32767),
          whole(u"season number"_qs, keys::Season, 0, kMost),
          whole(u"episode number"_qs, keys::EpisodeOrder, 0, kMost),
          whole(u"played count"_qs, keys::PlayCount, 0, kMost),
          whole(u"skipped count"_qs, keys::SkipCount, 0, kMost),
          rating(u"rating"_qs, keys::Rating, keys::RatingComputed),
          rating(u"album rating"_qs, keys::AlbumRating, keys::AlbumRatingComputed),
          volumeAdjustment(),
          seconds(u"start"_qs, keys::StartTime),
          finish(),
          seconds(u"bookmark"_qs, keys::Bookmark)};
}

std::vector<TrackField> choices() {
  return {flag(u"compilation"_qs, keys::Compilation),
          flag(u"enabled"_qs, keys::Disabled, true),
          flag(u"gapless"_qs, keys::PartOfGaplessAlbum),
          flag(u"shufflable"_qs, keys::SkipWhenShuffling, true),
          flag(u"bookmarkable"_qs, keys::RememberPosition),
          flag(u"unplayed"_qs, keys::Unplayed),
          favorited(),
          flag(u"disliked"_qs, keys::Disliked),
          flag(u"album favorited"_qs, keys::AlbumLoved),
          flag(u"album disliked"_qs, keys::AlbumDisliked),
          mediaKind(),
          flagFact(u"podcast"_qs, keys::Podcast),
          ratingKind(u"rating kind"_qs, keys::RatingComputed),
          ratingKind(u"album rating kind"_qs, keys::AlbumRatingComputed),
          playedDate(),
          date(u"skipped date"_qs, keys::SkipDate)};
}

// What a library without a shop and a cloud has to say about both.
std::vector<TrackField> shopFacts() {
  const auto constant = [](const QString &term, const ScriptValue &value) -> TrackField {
    return {term, Key(), [value](const KeyReader &) { return value; }, {}};
  };
  return {constant(u"cloud status"_qs, ScriptConstant{u"unknown"_qs}), constant(u"purchaser name"_qs, u""_qs),
          constant(u"purchaser apple id"_qs, u""_qs), constant(u"downloader name"_qs, u""_qs),
          constant(u"downloader apple id"_qs, u""_qs)};
}

std::vector<TrackField> facts() {
  return {dateFact(u"date added"_qs, keys::DateAdded),
          dateFact(u"modification date"_qs, keys::DateModified),
          dateFact(u"release date"_qs, keys::ReleaseDate),
          secondsFact(u"duration"_qs, keys::TotalTime),
          timeText(),
          wholeFact(u"bit rate"_qs, keys::BitRate),
          wholeFact(u"sample rate"_qs, keys::SampleRate),
          wholeFact(u"size"_qs, keys::Size),
          textFact(u"kind"_qs, keys::Kind),
          wholeFact(u"database id"_qs, keys::TrackID),
          wholeFact(u"id"_qs, keys::TrackID),
          textFact(u"persistent id"_qs, keys::PersistentID)};
}

}  // namespace

const std::vector<TrackField> &trackFields() {
  static const std::vector<TrackField> all = [] {
    std::vector<TrackField> made;
    for (const auto &part : {facts(), names(), numbers(), choices(), shopFacts()}) {
      made.insert(made.end(), part.begin(), part.end());
    }
    return made;
  }();
  return all;
}

const TrackField *trackField(const QString &term) {
  static const QHash<QString, const TrackField *> byTerm = [] {
    QHash<QString, const TrackField *> made;
    for (const TrackField &field : trackFields()) made.insert(field.term, &field);
    return made;
  }();
  return byTerm.value(term);
}

QString durationText(qint64 seconds) {
  const qint64 hours = seconds / 3600, minutes = seconds / 60 % 60;
  const QString tail = QString::number(seconds % 60).rightJustified(2, u'0');
  if (hours == 0) return QString::number(minutes) + u':' + tail;
  return QString::number(hours) + u':' + QString::number(minutes).rightJustified(2, u'0') + u':' + tail;
}
