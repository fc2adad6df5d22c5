#include "ctl/TagFacts.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <cerrno>

#include "audio/FileReader.h"
#include "audio/mp4/AACInfoTag.h"
#include "ctl/RowText.h"
#include "ctl/Terminal.h"

TagFacts::TagFacts(const QString &path) : mPath(path) {
  FileReader file;
  whyNot = tagFacts::whyUnreadable(path, file);
  if (!isReadable()) return;
  sniffed = SongFile::songDataTypeOfFile(file, path);
  file.close();
  song = SongFile::songWithPath(path);
  if (!song) own = AudioInfoTag::tagWithPath(path);
  held = song ? song->infotag() : own.get();
}

QString TagFacts::complaint() const {
  if (!isReadable()) return whyNot;
  if (held) return {};
  return tagFacts::kindOf(mPath, sniffed) == SongFile::kUnknownData
             ? QStringLiteral("neither MPEG nor MP4 audio")
             : QStringLiteral("no tag that can be read");
}

namespace {

QString line(const char *name, const QString &content) {
  return QLatin1String("  ") + QString::fromLatin1(name).leftJustified(14) + content + u'\n';
}

/// A line for a text that is there.
QString lineOf(const char *name, const QString &text) {
  return text.isEmpty() ? QString() : line(name, tagFacts::shortened(text));
}

QString audioInWords(const AudioInfoTag &tag) {
  QStringList facts;
  if (!tag.formattedDuration().isNull()) facts << tag.formattedDuration();
  if (tag.bitrate() > 0) facts << QStringLiteral("%1 kbit/s").arg(tag.bitrate());
  if (tag.samplerate() > 0) facts << QStringLiteral("%1 Hz").arg(tag.samplerate());
  return facts.join(QStringLiteral(", "));
}

QString picturesInWords(const AudioInfoTag &tag) {
  QString lines;
  qsizetype index = 0;
  for (const ID3ImagePtr &image : tag.images()) {
    lines += line("Picture", QStringLiteral("%1: ").arg(index++) + tagFacts::inWords(*image));
  }
  return lines;
}

QString framesInWords(const AudioInfoTag &tag) {
  const auto *mpeg = dynamic_cast<const MP3InfoTag *>(&tag);
  if (!mpeg || mpeg->frames().empty()) return {};
  return line("Frames", QString::number(mpeg->frames().size()));
}

QString kindInWords(const AudioInfoTag &tag) {
  const bool isMPEG = dynamic_cast<const MP3InfoTag *>(&tag) != nullptr;
  if (!isMPEG) return QStringLiteral("MP4");
  const QString now = tag.readVersion().isNull() ? QStringLiteral("without a tag")
                                                 : QStringLiteral("tag of version ") + tag.readVersion();
  return QStringLiteral("MPEG, %1, written as %2").arg(now, tag.writeVersion());
}

}  // namespace

QString TagFacts::text() const {
  QString lines = printable(mPath) + u'\n';
  if (!held) return lines + line("Kind", QStringLiteral("no tag that can be read"));
  const AudioInfoTag &tag = *held;
  lines += line("Kind", kindInWords(tag));
  lines += lineOf("Title", tag.title()) + lineOf("Artist", tag.artist()) + lineOf("Album", tag.album());
  lines += lineOf("Track", tag.track()) + lineOf("Year", tag.year()) + lineOf("Genres", tag.genres());
  lines += lineOf("BPM", tag.bpm());
  if (tag.isPartOfCompilation()) lines += line("Compilation", QStringLiteral("yes"));
  if (!tag.lyrics().isEmpty()) {
    const QString count = rowText::counted(tag.lyrics().size(), "character", "characters");
    lines += line("Lyrics", count + QStringLiteral(": ") + tagFacts::shortened(tag.lyrics()));
  }
  lines += lineOf("Audio", audioInWords(tag)) + picturesInWords(tag) + framesInWords(tag);
  if (tag.encounteredProblemDecoding()) lines += line("Problem", QStringLiteral("the tag is malformed"));
  if (!song) lines += line("Note", QStringLiteral("too small to be a song"));
  return lines;
}

namespace tagFacts {

qint32 kindOf(const QString &path, qint32 sniffed) {
  if (sniffed != SongFile::kUnknownData) return sniffed;
  if (SongFile::claimsToBeMP3(path)) return SongFile::kMPEGData;
  return SongFile::claimsToBeAAC(path) ? SongFile::kMP4Data : SongFile::kUnknownData;
}

QString whyUnreadable(const QString &path) {
  FileReader file;
  return whyUnreadable(path, file);
}

QString whyUnreadable(const QString &path, FileReader &file) {
  errno = 0;
  if (file.open(path)) return {};
  const int reason = errno;
  const QFileInfo facts(path);
  if (facts.isDir()) return QStringLiteral("it is a folder");
  if (facts.exists() && !facts.isFile()) return QStringLiteral("it is no ordinary file");
  return qt_error_string(reason);
}

QString digest(QByteArrayView bytes) {
  return QString::fromLatin1(QCryptographicHash::hash(bytes.toByteArray(), QCryptographicHash::Sha1).toHex());
}

namespace {

struct Digest {
  QString operator()(const QByteArray &bytes) const { return digest(QByteArrayView(bytes)); }
  QString operator()(const ID3ImagePtr &image) const {
    return digest(QByteArrayView(image ? image->imageData() : QByteArray()));
  }
  QString operator()(const QStringList &texts) const {
    QByteArray bytes;
    for (const QString &text : texts) bytes += text.toUtf8() + '\0';
    return digest(QByteArrayView(bytes));
  }
  QString operator()(const TextBlock &block) const {
    QByteArray bytes;
    const auto add = [&bytes](const char *name, const QString &text) {
      if (!text.isNull()) bytes += name + QByteArray("=") + text.toUtf8() + '\0';
    };
    add("lang", block.lang);
    add("desc", block.desc);
    add("text", block.text);
    return digest(QByteArrayView(bytes));
  }
};

struct Words {
  QString operator()(const QByteArray &bytes) const {
    return rowText::counted(bytes.size(), "byte", "bytes");
  }
  QString operator()(const ID3ImagePtr &image) const { return image ? inWords(*image) : QString(); }
  QString operator()(const QStringList &texts) const { return shortened(texts.join(QStringLiteral(" | "))); }
  QString operator()(const TextBlock &block) const {
    return shortened(block.lang + u' ' + block.desc + QStringLiteral(": ") + block.text);
  }
};

}  // namespace

QString digest(const FrameValue &value) {
  return std::visit(Digest(), value);
}

QString kindName(const FrameValue &value) {
  static const char *const kNames[] = {"strings", "text", "image", "raw"};
  return QString::fromLatin1(kNames[value.index()]);
}

QString inWords(const FrameValue &value) {
  return std::visit(Words(), value);
}

QString inWords(ID3Image &image) {
  const QString type = image.mimeFormat().isNull() ? QStringLiteral("unknown type") : image.mimeFormat();
  QString words = shortened(type) + QStringLiteral(", ") +
                  rowText::counted(image.imageData().size(), "byte", "bytes") +
                  QStringLiteral(", kind %1").arg(image.type());
  if (!image.description().isEmpty()) words += QStringLiteral(", \"%1\"").arg(shortened(image.description()));
  return words;
}

QString shortened(const QString &text) {
  constexpr qsizetype kLongest = 60;
  if (text.size() <= kLongest) return printable(text);
  return printable(text.left(kLongest)) + QChar(0x2026);
}

}  // namespace tagFacts
