#pragma once

#include "audio/tags/MP3InfoTag.h"
#include "tests/audio/ID3Builder.h"
#include "tests/fixtures/TestPlatform.h"

/// Reads and writes MPEG files in the test's folder.
class ID3Fixture : public TestPlatform {
 protected:
  using TagPtr = std::unique_ptr<MP3InfoTag>;

  QString file(const QByteArray &bytes) const { return writeFile(u"music/song.mp3"_qs, bytes); }
  TagPtr read(const QByteArray &tagAndMore) const {
    return MP3InfoTag::tagWithMPEGFile(file(tagAndMore + id3::audio()));
  }

  /// A tag as one line for a frame: its id and what it holds.
  static QStringList store(const MP3InfoTag &tag) {
    QStringList lines;
    for (const MP3InfoTag::Frame &frame : tag.frames()) {
      lines.append(QString::fromLatin1(frame.id) + u'=' +
                   std::visit([](const auto &value) { return text(value); }, frame.value));
    }
    return lines;
  }
  QStringList storeOf(const QByteArray &tagAndMore) const {
    const TagPtr tag = read(tagAndMore);
    return tag ? store(*tag) : QStringList(u"no tag"_qs);
  }

 private:
  static QString text(const QStringList &texts) { return texts.join(u'|'); }
  static QString text(const TextBlock &block) { return block.lang + u':' + block.desc + u':' + block.text; }
  static QString text(const QByteArray &raw) { return QString::fromLatin1(raw.toHex(' ')); }
  static QString text(const ID3ImagePtr &image) {
    return image->mimeFormat() + u' ' + QString::number(image->type()) + u' ' + image->description() + u' ' +
           QString::fromLatin1(image->imageData().toHex(' '));
  }
};
