#include <QtEndian>
#include <cmath>
#include <vector>

#include "audio/ByteView.h"
#include "audio/mp4/AtomWalk.h"
#include "audio/mp4/MP4TagWriter.h"
#include "support/BMLog.h"

namespace {

using atomwalk::kNotFoundOffset;
using atomwalk::Source;

const QString kChunkOffsets = QStringLiteral("moov:trak:mdia:minf:stbl:stco");
const QString kFirstOfEach = QStringLiteral("1:1:1:1:1:1");

constexpr quint32 kMdat = 0x6d646174, kMoof = 0x6d6f6f66;

/// Where the top-level atoms of a name are.
std::vector<quint64> offsetsOf(const Source &source, quint32 wanted) {
  std::vector<quint64> offsets;
  const quint64 length = source.length();
  for (quint64 offset = 0; length >= 8 && offset <= length - 8;) {
    quint32 name = 0;
    const quint64 size = atomwalk::sizeOfAtomInAtOffsetName(source, offset, &name);
    if (name == wanted) offsets.push_back(offset);
    if (size > length - offset) break;
    offset += size;
  }
  return offsets;
}

bool has(const Source &source, const QString &path, const QString &indexes) {
  return atomwalk::offsetToAtomInAtNamePathIndexed(source, path, indexes) != kNotFoundOffset;
}

/// True if something other than the first track's 32-bit table may point at audio.
bool hasOtherTables(const Source &source) {
  if (!offsetsOf(source, kMoof).empty()) return true;
  for (int track = 1;; ++track) {
    if (!has(source, QStringLiteral("moov:trak"), QStringLiteral("1:%1").arg(track))) return false;
    const QString indexes = QStringLiteral("1:%1:1:1:1:1").arg(track);
    if (has(source, QStringLiteral("moov:trak:mdia:minf:stbl:co64"), indexes)) return true;
    if (track > 1 && has(source, kChunkOffsets, indexes)) return true;
  }
}

/// Moves the entries of a "stco" atom that point at or behind a place.
void moveEntries(QByteArray &atom, quint64 from, quint32 delta) {
  const quint32 count = qFromBigEndian<quint32>(atom.constData() + 12);
  for (qint64 i = 0; i < count; ++i) {
    const qsizetype at = 16 + 4 * i;
    if (at + 4 > atom.size()) return;
    const quint32 entry = qFromBigEndian<quint32>(atom.constData() + at);
    if (entry >= from) qToBigEndian(entry + delta, atom.data() + at);
  }
}

}  // namespace

bool MP4TagWriter::adjustChunkOffsetsInAtomDataOriginalFile(QByteArray &image, const FileReader &original) {
  const Source before(original), after{QByteArrayView(image)};
  const std::vector<quint64> audioBefore = offsetsOf(before, kMdat), audioAfter = offsetsOf(after, kMdat);
  if (audioBefore.empty() || audioBefore.size() != audioAfter.size()) return false;
  for (size_t i = 1; i < audioBefore.size(); ++i) {
    if (audioBefore[i] != audioAfter[i]) return false;
  }
  const quint64 oldPlace = audioBefore.front(), newPlace = audioAfter.front();
  if (oldPlace == newPlace) return true;
  const quint64 place = atomwalk::offsetToAtomInAtNamePathIndexed(before, kChunkOffsets, kFirstOfEach);
  if (place == kNotFoundOffset || hasOtherTables(before)) return false;
  QByteArray table = before.read(place, atomwalk::sizeOfAtomInAtOffsetName(before, place, nullptr));
  const quint64 count = ByteView{table}.u32(12);
  if (table.size() < 16 || count * 4 + 12 > quint64(table.size())) {
    BMLog("adjustChunkOffsets failed sanity check (%d > %qu)", qint64(count * 4 + 12), quint64(table.size()));
    return false;
  }
  moveEntries(table, oldPlace, quint32(newPlace) - quint32(oldPlace));
  const quint64 newTable = atomwalk::offsetToAtomInAtNamePathIndexed(after, kChunkOffsets, kFirstOfEach);
  if (newTable == kNotFoundOffset || newTable + quint64(table.size()) > quint64(image.size())) return false;
  image.replace(qsizetype(newTable), table.size(), table);
  return true;
}

bool MP4TagWriter::setModifiedTimeInAtomData(Date date, QByteArray &image) {
  constexpr double k1904To2001 = 3061152000.0;
  const auto seconds = quint32(qint64(std::clamp(date.seconds + k1904To2001, -9.0e15, 9.0e15)));
  static const std::pair<QString, QString> kTimed[] = {
      {QStringLiteral("moov:mvhd"), QStringLiteral("1:1")},
      {QStringLiteral("moov:trak:tkhd"), QStringLiteral("1:1:1")},
      {QStringLiteral("moov:trak:mdia:mdhd"), QStringLiteral("1:1:1:1")}};
  for (const auto &[path, indexes] : kTimed) {
    const Source source{QByteArrayView(image)};
    const quint64 place = atomwalk::offsetToAtomInAtNamePathIndexed(source, path, indexes);
    if (place == kNotFoundOffset) return false;
    const quint64 size = atomwalk::sizeOfAtomInAtOffsetName(source, place, nullptr);
    const bool fits = size >= 20 && place + 20 <= quint64(image.size());
    if (fits) qToBigEndian(seconds, image.data() + place + 16);
  }
  return true;
}
