// A file's facts as one object.

#include "audio/mp4/AACInfoTag.h"
#include "ctl/JsonWriter.h"
#include "ctl/TagFacts.h"
#include "values/Keys.h"

namespace {

/// A text, or null for one that is not there.
void text(JsonWriter &json, QStringView name, const QString &content) {
  json.member(name, content.isNull() ? Value() : Value(content));
}

void range(JsonWriter &json, QStringView name, FileRange run) {
  json.key(name);
  json.beginArray();
  json.value(qint64(run.start));
  json.value(qint64(run.length));
  json.endArray();
}

void texts(JsonWriter &json, const AudioInfoTag &tag) {
  text(json, u"readVersion", tag.readVersion());
  text(json, u"writeVersion", tag.writeVersion());
  text(json, u"title", tag.title());
  text(json, u"artist", tag.artist());
  text(json, u"album", tag.album());
  text(json, u"track", tag.track());
  text(json, u"year", tag.year());
  text(json, u"genres", tag.genres());
  text(json, u"lyrics", tag.lyrics());
  text(json, u"bpm", tag.bpm());
  json.member(u"compilation", tag.isPartOfCompilation());
  json.member(u"trackNumber", tag.trackNumber());
  json.member(u"numberOfTracksOnAlbum", tag.numberOfTracksOnAlbum());
  text(json, u"normalizedArtist", tag.normalizedArtist());
  text(json, u"reversedArtist", tag.reversedArtist());
  json.member(u"problem", tag.encounteredProblemDecoding());
}

void audio(JsonWriter &json, const AudioInfoTag &tag) {
  const Dictionary stored = tag.metadata();
  json.key(u"metadata");
  json.beginObject();
  json.member(u"duration", stored.value(keys::kMDItemDurationSeconds));
  json.member(u"bitrate", stored.value(keys::kMDItemAudioBitRate));
  json.member(u"samplerate", stored.value(keys::kMDItemAudioSampleRate));
  json.endObject();
  json.member(u"duration", double(tag.duration()));
  json.member(u"bitrate", tag.bitrate());
  json.member(u"samplerate", tag.samplerate());
  text(json, u"formattedDuration", tag.formattedDuration());
}

void pictures(JsonWriter &json, const AudioInfoTag &tag) {
  json.member(u"numberOfImages", tag.numberOfImages());
  json.member(u"numberOfArtworkBytes", qint64(tag.numberOfArtworkBytes()));
  json.key(u"images");
  json.beginArray();
  for (const ID3ImagePtr &image : tag.images()) {
    json.beginObject();
    text(json, u"mime", image->mimeFormat());
    json.member(u"type", image->type());
    json.member(u"size", qint64(image->imageData().size()));
    json.member(u"sha1", tagFacts::digest(QByteArrayView(image->imageData())));
    text(json, u"suffix", image->filenameSuffix());
    text(json, u"description", image->description());
    json.endObject();
  }
  json.endArray();
}

void frames(JsonWriter &json, const MP3InfoTag &tag) {
  range(json, u"id3v1Range", tag.id3v1Range());
  range(json, u"id3v2Range", tag.id3v2Range());
  json.key(u"frames");
  json.beginArray();
  for (const MP3InfoTag::Frame &frame : tag.frames()) {
    json.beginObject();
    json.member(u"id", QString::fromLatin1(frame.id));
    json.member(u"kind", tagFacts::kindName(frame.value));
    json.member(u"sha1", tagFacts::digest(frame.value));
    json.endObject();
  }
  json.endArray();
}

}  // namespace

void TagFacts::write(JsonWriter &json) const {
  json.beginObject();
  json.member(u"path", mPath);
  json.member(u"sniffed", sniffed);
  json.key(u"claims");
  json.beginObject();
  json.member(u"mp3", SongFile::claimsToBeMP3(mPath));
  json.member(u"aac", SongFile::claimsToBeAAC(mPath));
  json.member(u"ogg", SongFile::claimsToBeOGG(mPath));
  json.member(u"aiff", SongFile::claimsToBeAIFF(mPath));
  json.endObject();
  json.member(u"isSongFile", song != nullptr);
  json.member(u"status", song ? Value(song->activityStatus()) : Value());
  json.key(u"tag");
  writeTag(json);
  json.endObject();
}

void TagFacts::writeTag(JsonWriter &json) const {
  if (!held) return json.value({});
  const auto *mpeg = dynamic_cast<const MP3InfoTag *>(held);
  const auto *aac = dynamic_cast<const AACInfoTag *>(held);
  json.beginObject();
  json.member(u"type", mpeg ? SongFile::kMPEGData : SongFile::kMP4Data);
  texts(json, *held);
  audio(json, *held);
  pictures(json, *held);
  if (mpeg) frames(json, *mpeg);
  if (aac) json.member(u"attributes", aac->attributes());
  json.endObject();
}
