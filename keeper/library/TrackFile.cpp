#include "keeper/library/TrackFile.h"

#include <QFileInfo>
#include <cmath>

#include "audio/SongFile.h"
#include "audio/mp4/AACInfoTag.h"
#include "audio/tags/MP3InfoTag.h"
#include "keeper/library/FileTexts.h"
#include "keeper/library/MpegLength.h"
#include "platform/Platform.h"
#include "values/Keys.h"

namespace {

void setText(const Dictionary &record, Key key, const QString &text) {
  if (!text.isEmpty()) record.set(key, text);
}

void setNumber(const Dictionary &record, Key key, qint64 number) {
  if (number > 0) record.set(key, number);
}

QString kindOf(const AudioInfoTag &tag, const QString &path) {
  if (!dynamic_cast<const AACInfoTag *>(&tag)) return u"MPEG audio file"_qs;
  const QByteArray codec = fileTexts::mp4Codec(path);
  if (codec == "alac") return u"Apple Lossless audio file"_qs;
  return codec == "drms" ? u"Protected AAC audio file"_qs : u"AAC audio file"_qs;
}

void addNames(const AudioInfoTag &tag, const Dictionary &record) {
  setText(record, keys::Name, tag.title());
  setText(record, keys::Artist, tag.artist());
  setText(record, keys::Album, tag.album());
  setText(record, keys::Genre, tag.genres());
}

void addNumbers(const AudioInfoTag &tag, const Dictionary &record) {
  setNumber(record, keys::TrackNumber, tag.trackNumber());
  setNumber(record, keys::TrackCount, tag.numberOfTracksOnAlbum());
  setNumber(record, keys::Year, Value(tag.year()).toInteger());
  setNumber(record, keys::BPM, Value(tag.bpm()).toInteger());
  if (tag.isPartOfCompilation()) record.set(keys::Compilation, true);
}

void addFacts(const AudioInfoTag &tag, const Dictionary &record) {
  constexpr double kMilliseconds = 1000.0;
  setNumber(record, keys::TotalTime, std::llround(double(tag.duration()) * kMilliseconds));
  setNumber(record, keys::BitRate, tag.bitrate());
  setNumber(record, keys::SampleRate, tag.samplerate());
  setNumber(record, keys::ArtworkCount, tag.numberOfImages());
}

void refineTime(const MP3InfoTag &tag, const QString &path, const Dictionary &record) {
  const qint64 length = mpegLength::milliseconds(path, tag.id3v2Range().length, tag.id3v1Range().length);
  if (length > 0) record.set(keys::TotalTime, length);
}

}  // namespace

namespace trackFile {

Dictionary record(const QString &path) {
  const std::optional<Dictionary> facts = stamp(path);
  if (!facts || !SongFile::songWithPath(path)) return {};
  const AudioInfoTagPtr tag = AudioInfoTag::tagWithPath(path);
  const auto *mpeg = dynamic_cast<const MP3InfoTag *>(tag.get());
  // A file that is neither by its content has no audio that can be told.
  if (!tag || SongFile::songDataTypeAtPath(path) == SongFile::kUnknownData) {
    const bool isByName = SongFile::claimsToBeMP3(path) || SongFile::claimsToBeAAC(path);
    if (!tag || !isByName || tag->duration() <= 0) return {};
  }
  const Dictionary record = Dictionary::make();
  addNames(*tag, record);
  if (mpeg) {
    fileTexts::addFromTag(*mpeg, record);
  } else {
    fileTexts::addFromMP4File(path, record);
  }
  record.set(keys::Kind, kindOf(*tag, path));
  addNumbers(*tag, record);
  for (const auto &[key, value] : *facts) record.set(key, value);
  addFacts(*tag, record);
  if (mpeg) refineTime(*mpeg, path, record);
  return record;
}

std::optional<Dictionary> stamp(const QString &path) {
  const FileFacts &facts = *platform().fileFacts;
  const std::optional<Date> date = facts.modificationDate(path);
  if (!date || !QFileInfo(path).isFile()) return {};
  const Dictionary record = Dictionary::make();
  record.set(keys::Size, facts.fileSize(path).value_or(0));
  record.set(keys::DateModified, *date);
  return record;
}

bool isUnchanged(const QString &path, const Value &size, const Value &dateModified) {
  const std::optional<Dictionary> now = stamp(path);
  const Date *then = dateModified.toDate();
  if (!now || !then || size.toInteger() != now->value(keys::Size).toInteger()) return false;
  const Value date = now->value(keys::DateModified);
  const double seconds = date.toDate()->seconds;
  const bool isWhole = then->seconds == std::floor(then->seconds);
  return then->seconds == (isWhole ? std::floor(seconds) : seconds);
}

}  // namespace trackFile
