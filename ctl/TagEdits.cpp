#include "ctl/TagEdits.h"

#include <QHash>
#include <QStringList>

#include "audio/AudioInfoTag.h"
#include "audio/FileReader.h"
#include "ctl/Options.h"
#include "ctl/TagFacts.h"
#include "ctl/Terminal.h"

namespace {

const QString kSet = QStringLiteral("--set");
const QString kImage = QStringLiteral("--image");
const QString kMime = QStringLiteral("--mime");
const QString kRemoveImage = QStringLiteral("--remove-image");
const QString kRemoveImages = QStringLiteral("--remove-images");
const QString kCompilation = QStringLiteral("compilation");

using Setter = void (AudioInfoTag::*)(const QString &);

const QHash<QString, Setter> &setters() {
  static const QHash<QString, Setter> table = {{QStringLiteral("title"), &AudioInfoTag::setTitle},
                                               {QStringLiteral("artist"), &AudioInfoTag::setArtist},
                                               {QStringLiteral("album"), &AudioInfoTag::setAlbum},
                                               {QStringLiteral("track"), &AudioInfoTag::setTrack},
                                               {QStringLiteral("year"), &AudioInfoTag::setYear},
                                               {QStringLiteral("genres"), &AudioInfoTag::setGenres},
                                               {QStringLiteral("lyrics"), &AudioInfoTag::setLyrics},
                                               {QStringLiteral("bpm"), &AudioInfoTag::setBPM}};
  return table;
}

bool isYes(const QString &text) {
  return text == u"1" || text == u"yes" || text == u"true";
}

bool isNo(const QString &text) {
  return text.isEmpty() || text == u"0" || text == u"no" || text == u"false";
}

QString addPicture(const QString &path, const QString &type, AudioInfoTag &tag) {
  const FileReader file(path);
  const QByteArray bytes = file.read(0, file.size());
  QString why = tagFacts::whyUnreadable(path);
  if (why.isNull() && bytes.size() != file.size()) why = QStringLiteral("it shrank while it was read");
  if (why.isNull() && bytes.isEmpty()) why = QStringLiteral("it holds nothing");
  if (!why.isNull()) return QStringLiteral("Can't read \"%1\": %2").arg(path, why);
  if (tag.addImage(ID3Image::imageWithDataMimeType(bytes, type))) return {};
  return QStringLiteral("the picture cannot be added");
}

}  // namespace

QStringList TagEdits::flagNames() {
  return {kRemoveImages};
}

QStringList TagEdits::valueNames() {
  return {kSet, kImage, kMime, kRemoveImage};
}

QString TagEdits::usage() {
  return QStringLiteral(
      "[--set KEY=TEXT]... [--image PATH [--mime TYPE]]... [--remove-image N] [--remove-images]");
}

bool TagEdits::take(const Options &options, QString *error) {
  for (const auto &[option, value] : options.sequence()) {
    *error = add(option, value);
    if (!error->isNull()) return false;
  }
  return true;
}

QString TagEdits::add(const QString &option, const QString &value) {
  if (option == kSet) return addText(value);
  if (option == kImage) edits.push_back({Kind::AddImage, value, {}, 0});
  if (option == kRemoveImages) edits.push_back({Kind::RemoveAllImages, {}, {}, 0});
  if (option == kMime) {
    const bool follows = !edits.empty() && edits.back().kind == Kind::AddImage && edits.back().text.isNull();
    if (!follows || value.isEmpty()) return QStringLiteral("--mime tells the type of the --image before it");
    edits.back().text = value;
  }
  if (option == kRemoveImage) {
    bool isNumber = false;
    const qint64 index = value.toLongLong(&isNumber);
    if (!isNumber || index < 0) return QStringLiteral("--remove-image counts pictures from 0");
    edits.push_back({Kind::RemoveImage, {}, {}, index});
  }
  return {};
}

QString TagEdits::addText(const QString &assignment) {
  const QString field = assignment.section(u'=', 0, 0), text = assignment.section(u'=', 1);
  if (!assignment.contains(u'=')) return QStringLiteral("--set takes KEY=TEXT");
  if (field != kCompilation && !setters().contains(field)) {
    return QStringLiteral(
               "no field \"%1\": title, artist, album, track, year, genres, lyrics, bpm, compilation")
        .arg(printable(field));
  }
  if (field == kCompilation && !isYes(text) && !isNo(text)) {
    return QStringLiteral("compilation is 1 or 0");
  }
  edits.push_back({Kind::Text, field, text, 0});
  return {};
}

bool TagEdits::apply(AudioInfoTag &tag, QString *error) const {
  for (const Edit &edit : edits) {
    *error = apply(edit, tag);
    if (!error->isNull()) return false;
  }
  return true;
}

QString TagEdits::apply(const Edit &edit, AudioInfoTag &tag) {
  switch (edit.kind) {
    case Kind::Text:
      if (edit.field == kCompilation) {
        tag.setIsPartOfCompilation(isYes(edit.text));
      } else {
        (tag.*setters().value(edit.field))(edit.text);
      }
      return {};
    case Kind::AddImage:
      return addPicture(edit.field, edit.text, tag);
    case Kind::RemoveImage:
      if (tag.removeImageAtIndex(edit.index)) return {};
      return QStringLiteral("there is no picture %1").arg(edit.index);
    case Kind::RemoveAllImages:
      tag.removeAllImages();
      return {};
  }
  return {};
}
