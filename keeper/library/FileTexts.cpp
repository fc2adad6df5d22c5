#include "keeper/library/FileTexts.h"

#include <array>

#include "audio/ByteView.h"
#include "audio/FileReader.h"
#include "audio/mp4/Atom.h"
#include "audio/mp4/AtomWalk.h"
#include "audio/tags/MP3InfoTag.h"
#include "audio/tags/TextDecoders.h"
#include "values/Keys.h"

namespace {

struct TextSource {
  Key key;
  /// Of versions 2.3 and later, and of 2.2.
  QByteArrayView frame, olderFrame;
  QString atom;
};

const std::array<TextSource, 8> &textSources() {
  static const std::array<TextSource, 8> sources{{
      {keys::AlbumArtist, "TPE2", "TP2", u"aART"_qs},
      {keys::Composer, "TCOM", "TCM", u"©wrt"_qs},
      {keys::Grouping, "TIT1", "TT1", u"©grp"_qs},
      {keys::SortName, "TSOT", "TST", u"sonm"_qs},
      {keys::SortArtist, "TSOP", "TSP", u"soar"_qs},
      {keys::SortAlbum, "TSOA", "TSA", u"soal"_qs},
      {keys::SortAlbumArtist, "TSO2", "TS2", u"soaa"_qs},
      {keys::SortComposer, "TSOC", "TSC", u"soco"_qs},
  }};
  return sources;
}

/// The bytes of a frame that the reader of tags keeps as it is, and where its content begins: later versions
/// have two flag bytes ahead. Zero bytes at the end close a text of UTF-16.
QByteArray contentOf(const MP3InfoTag &tag, const QByteArray &kept) {
  const qsizetype flags = tag.readVersion().startsWith(u"2.2") ? 0 : 2;
  return kept.mid(flags) + QByteArray(2, '\0');
}

QString textOf(const MP3InfoTag &tag, const FrameValue &value) {
  if (const auto *texts = std::get_if<QStringList>(&value)) return texts->value(0);
  if (const auto *bytes = std::get_if<QByteArray>(&value)) {
    const QByteArray content = contentOf(tag, *bytes);
    return id3text::id3v23StringsInWithinRange(content, 0, content.size() - 2).value(0);
  }
  return {};
}

QString commentOf(const MP3InfoTag &tag) {
  for (const MP3InfoTag::Frame &frame : tag.frames()) {
    const auto *bytes = std::get_if<QByteArray>(&frame.value);
    if (!bytes || (frame.id != "COMM" && frame.id != "COM")) continue;
    const QByteArray content = contentOf(tag, *bytes);
    const TextBlock block = id3text::textBlockInWithinRange(content, 0, content.size() - 2);
    // Comments with a name of their own are notes of programs.
    if (block.desc.isEmpty() && !block.text.isEmpty()) return block.text;
  }
  return {};
}

void setText(const Dictionary &record, Key key, const QString &text) {
  if (!text.isEmpty()) record.set(key, text);
}

void setDisc(const Dictionary &record, qint64 number, qint64 count) {
  if (number > 0) record.set(keys::DiscNumber, number);
  if (count > 0) record.set(keys::DiscCount, count);
}

/// The value of an item of an "ilst", behind the type and the locale of its "data". Items that the tree does
/// not open hold the header of their "data" as well.
QByteArray itemValue(Atom &list, const QString &name) {
  constexpr qsizetype kHeader = 8, kTypeAndLocale = 8;
  Atom *item = list.childAtAtomPathCreate(u"ilst:"_qs + name);
  if (!item) return {};
  if (!item->isContainer()) return item->data().mid(kHeader + kTypeAndLocale);
  Atom *data = list.childAtAtomPathCreate(u"ilst:"_qs + name + u":data"_qs);
  return data ? data->data().mid(kTypeAndLocale) : QByteArray();
}

}  // namespace

namespace fileTexts {

void addFromTag(const MP3InfoTag &tag, const Dictionary &record) {
  for (const TextSource &source : textSources()) {
    const FrameValue *value = tag.firstObjectForFrameIDOrID(source.frame, source.olderFrame);
    if (value) setText(record, source.key, textOf(tag, *value));
  }
  if (const FrameValue *disc = tag.firstObjectForFrameIDOrID("TPOS", "TPA")) {
    const QString text = textOf(tag, *disc);
    setDisc(record, Value(text.section(u'/', 0, 0)).toInteger(), Value(text.section(u'/', 1, 1)).toInteger());
  }
  setText(record, keys::Comments, commentOf(tag));
}

void addFromMP4File(const QString &path, const Dictionary &record) {
  try {
    const AtomPtr root = Atom::atomContainerFromFile(std::make_shared<FileReader>(path));
    Atom *list = root->childAtAtomPathCreate(u"FILE:moov:udta:meta:ilst"_qs);
    if (!list) return;
    for (const TextSource &source : textSources()) {
      setText(record, source.key, id3text::utf8(itemValue(*list, source.atom)));
    }
    setText(record, keys::Comments, id3text::utf8(itemValue(*list, u"©cmt"_qs)));
    const QByteArray disc = itemValue(*list, u"disk"_qs);
    const ByteView numbers{disc};
    setDisc(record, numbers.size() < 4 ? 0 : numbers.u16(2), numbers.size() < 6 ? 0 : numbers.u16(4));
  } catch (const std::exception &) {  // atoms that cannot be: the walk has told the log
  }
}

QByteArray mp4Codec(const QString &path) {
  try {
    const FileReader file(path);
    const QByteArray entries = atomwalk::atomDataInAtNamePath(file, u"moov:trak:mdia:minf:stbl:stsd"_qs);
    constexpr qsizetype kFirstName = 12;
    return entries.size() < kFirstName + 4 ? QByteArray() : entries.mid(kFirstName, 4);
  } catch (const std::exception &) {
    return {};
  }
}

}  // namespace fileTexts
