#include "audio/mp4/MP4TagWriter.h"

#include <QtEndian>

#include "audio/FileRewriter.h"
#include "audio/TagError.h"
#include "audio/mp4/Atom.h"
#include "audio/mp4/MP4Layout.h"
#include "platform/Platform.h"
#include "values/Keys.h"

namespace {

constexpr quint32 kData = 0x64617461;
/// The type of an item's whole number, where types are written in the fourth byte.
constexpr char kIntegerType = 0x15;
constexpr char kJpegType = 0x0D;

quint16 lowBits(const QString &text) {
  return quint16(Value(text).toInteger());
}

}  // namespace

bool MP4TagWriter::modifySongFileAtPath(const QString &path, QString *error) {
  try {
    FileRewriter file;
    const auto original = std::make_shared<FileReader>(path);
    if (!original->isOpen() || !file.open(path)) return false;
    Atom::setAutoSizing(true);
    const AtomPtr root = Atom::atomContainerFromFile(original);
    // Atoms that overlap would be written more than once, and move the audio behind them.
    if (root->size() > quint64(original->size())) throw TagError("bad size atom");
    Atom *meta = root->childAtAtomPathCreate(QStringLiteral("FILE:moov:udta:meta"));
    Atom *list = meta ? meta->childAtAtomPathCreate(QStringLiteral("meta:ilst")) : nullptr;
    bool written = false;
    if (list) {
      writeTexts(*list);
      writeNumbers(*list);
      writePictures(*list);
      QByteArray image = root->flattenedData();
      const qsizetype rootHeader = qFromBigEndian<quint32>(image.constData()) == 1 ? 16 : 8;
      if (image.size() <= rootHeader) {
        *error = QStringLiteral("cannot generate atom data");
      } else {
        image.remove(0, rootHeader);
        written = writeImage(*original, file, image, error);
      }
    }
    Atom::setAutoSizing(false);
    return written;
  } catch (const std::exception &problem) {  // autoSizing stays on; the next write begins by setting it
    *error = QStringLiteral("can't modify (an error occurred): %1").arg(QString::fromUtf8(problem.what()));
    return false;
  }
}

bool MP4TagWriter::writeImage(const FileReader &original, FileRewriter &file, QByteArray &image,
                              QString *error) {
  if (!setModifiedTimeInAtomData(platform().clock->now(), image)) {
    *error = QStringLiteral("cannot set modification date");
    return false;
  }
  const MP4Layout before(original), after{QByteArrayView(image)};
  QString failure;
  if (before == after && after.endOfMeta() && *after.endOfMeta() <= quint64(image.size())) {
    failure = file.writeFront(QByteArrayView(image).first(qsizetype(*after.endOfMeta())));
  } else if (!adjustChunkOffsetsInAtomDataOriginalFile(image, original)) {
    *error = QStringLiteral("cannot update chunk offsets");
    return false;
  } else {
    failure = file.replaceAll(image);
  }
  if (!failure.isNull()) throw TagError(failure.toStdString());
  return true;
}

void MP4TagWriter::removeItem(Atom &list, const QString &item) {
  if (Atom *atom = list.childAtAtomPathCreate(item)) atom->removeFromContainer();
}

void MP4TagWriter::setItem(Atom &list, const QString &item, const QByteArray &payload) {
  if (Atom *atom = list.childAtAtomPathCreate(item + QStringLiteral(":data"), true)) atom->setData(payload);
}

void MP4TagWriter::writeText(Atom &list, const QString &text, const QString &item) {
  if (text.isEmpty()) return removeItem(list, item);
  Atom *atom = list.childAtAtomPathCreate(item + QStringLiteral(":data"), true);
  if (atom) atom->setStringValue(text);
}

void MP4TagWriter::writeTexts(Atom &list) {
  writeText(list, tag.title(), QStringLiteral("ilst:©nam"));
  writeText(list, tag.artist(), QStringLiteral("ilst:©ART"));
  writeText(list, tag.album(), QStringLiteral("ilst:©alb"));
  writeText(list, tag.mAttribs.value(keys::year).toText(), QStringLiteral("ilst:©day"));
  writeGenre(list);
  writeText(list, tag.lyrics(), QStringLiteral("ilst:©lyr"));
}

void MP4TagWriter::writeGenre(Atom &list) {
  removeItem(list, QStringLiteral("ilst:gnre"));
  const QString genre = tag.genres();
  if (genre.isNull()) return removeItem(list, QStringLiteral("ilst:©gen"));
  Atom *atom = list.childAtAtomPathCreate(QStringLiteral("ilst:©gen:data"), true);
  if (atom) atom->setStringValue(genre);
}

void MP4TagWriter::writeTrack(Atom &list) {
  const QString text = tag.track();
  if (text.isNull()) return removeItem(list, QStringLiteral("ilst:trkn"));
  const qsizetype slash = text.indexOf(u'/');
  const bool hasTotal = slash > 0 && slash < text.size() - 1;
  QByteArray payload(16, '\0');
  qToBigEndian(lowBits(hasTotal ? text.left(slash) : text), payload.data() + 10);
  qToBigEndian(hasTotal ? lowBits(text.mid(slash + 1)) : quint16(0), payload.data() + 12);
  setItem(list, QStringLiteral("ilst:trkn"), payload);
}

void MP4TagWriter::writeNumbers(Atom &list) {
  writeTrack(list);
  if (Value(tag.bpm()).toInteger() == 0) {
    removeItem(list, QStringLiteral("ilst:tmpo"));
  } else {
    QByteArray payload(10, '\0');
    payload[3] = kIntegerType;
    qToBigEndian(lowBits(tag.bpm()), payload.data() + 8);
    setItem(list, QStringLiteral("ilst:tmpo"), payload);
  }
  QByteArray payload(9, '\0');
  payload[3] = kIntegerType;
  payload[8] = tag.isPartOfCompilation() ? 1 : 0;
  setItem(list, QStringLiteral("ilst:cpil"), payload);
}

void MP4TagWriter::writePictures(Atom &list) {
  constexpr qsizetype kLargest = 0x7ffffffe;
  Atom *cover = list.childAtAtomPathCreate(QStringLiteral("ilst:covr"));
  if (tag.mImages.empty()) {
    if (cover) cover->removeFromContainer();
    return;
  }
  if (!cover) {
    cover = list.childAtAtomPathCreate(QStringLiteral("ilst:covr"), true);
    if (!cover) return;
    cover->becomeContainer();
  }
  if (!cover->contents().empty()) {
    cover->resizeSiblingFreeBy(qint64(cover->size()));
    cover->removeAllChildren();
  }
  for (const ID3ImagePtr &picture : tag.mImages) {
    const QByteArray &bytes = picture->imageData();
    if (bytes.isEmpty() || bytes.size() > kLargest) continue;
    QByteArray payload(8, '\0');
    payload[3] = kJpegType;
    AtomPtr data = Atom::atomWithName(kData);
    data->setData(payload + bytes);
    cover->resizeSiblingFreeBy(-qint64(8 + cover->append(std::move(data))->size()));
  }
}
