// Any bytes as an MP4 file whose tag is changed and written: a write that is refused leaves every byte, and
// one that is done leaves every chunk of audio where the tables say.

#include "audio/ByteView.h"
#include "audio/TagError.h"
#include "audio/mp4/AACInfoTag.h"
#include "audio/mp4/Atom.h"
#include "fuzz/AtomInput.h"

namespace {

constexpr quint32 kStco = 0x7374636f, kCo64 = 0x636f3634, kMdat = 0x6d646174;

/// The places that all tables of a file name, in their order.
void collectChunks(const Atom &atom, std::vector<quint64> &places) {
  for (const AtomPtr &child : atom.contents()) collectChunks(*child, places);
  if (atom.name() != kStco && atom.name() != kCo64) return;
  const QByteArray payload = atom.data();
  const ByteView table{payload};
  const qint64 width = atom.name() == kCo64 ? 8 : 4;
  const qint64 room = (table.size() - 8) / width;
  for (qint64 i = 0; i < std::min<qint64>(table.u32(4), room); ++i) {
    places.push_back(width == 8 ? table.u64(8 + 8 * i) : table.u32(8 + 4 * i));
  }
}

std::vector<quint64> chunksOf(const Atom &root) {
  std::vector<quint64> places;
  for (const AtomPtr &child : root.contents()) collectChunks(*child, places);
  return places;
}

bool isAudio(const Atom &root, quint64 place, quint64 length) {
  for (const AtomPtr &child : root.contents()) {
    const quint64 start = child->fileDataStart();
    const bool holds = place >= start && place + length <= start + child->fileDataLength();
    if (child->name() == kMdat && holds) return true;
  }
  return false;
}

AtomPtr treeOf(const QString &path) {
  return Atom::atomContainerFromFile(std::make_shared<FileReader>(path));
}

void requireSameAudio(const QString &path, const Atom &before, const std::vector<quint64> &chunks,
                      const QByteArray &old, const QByteArray &now) {
  constexpr quint64 kSample = 4;
  const std::vector<quint64> moved = chunksOf(*treeOf(path));
  require(moved.size() == chunks.size());
  for (size_t i = 0; i < chunks.size(); ++i) {
    if (!isAudio(before, chunks[i], kSample)) continue;
    const QByteArray audio = old.mid(qsizetype(chunks[i]), kSample);
    require(ByteView{now}.hasAt(qint64(moved[i]), audio));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, size_t size) {
  startAtoms();
  if (size < 2) return 0;
  static InputFile file;
  const QByteArray data(reinterpret_cast<const char *>(bytes) + 2, qsizetype(size) - 2);
  const QString path = file.holding(data);
  const auto tag = AACInfoTag::tagWithMP4File(path);
  if (!tag) return 0;
  const AtomPtr before = treeOf(path);
  const std::vector<quint64> chunks = chunksOf(*before);
  tag->setTitle(QString(bytes[0], QChar(u't')));
  if (bytes[1] % 4 == 1) tag->removeAllImages();
  if (bytes[1] % 4 == 2) tag->addImage(ID3Image::imageWithDataMimeType(QByteArray(bytes[1], 'p'), {}));
  if (bytes[1] % 4 == 3) tag->setLyrics({});
  QString error;
  const bool written = tag->modifySongFileAtPathError(path, &error);
  const QByteArray now = file.bytes();
  if (written) {
    requireSameAudio(path, *before, chunks, data, now);
  } else {
    require(now == data);
  }
  return 0;
}
