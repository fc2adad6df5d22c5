// Where the chunks of audio are when the audio has moved, and when a file was changed.

#include <QtEndian>
#include <algorithm>

#include "audio/ByteView.h"
#include "audio/mp4/AtomWalk.h"
#include "audio/mp4/MP4Layout.h"
#include "audio/mp4/MP4TagWriter.h"
#include "support/BMLog.h"

namespace {

using atomwalk::kNotFoundOffset;
using atomwalk::Source;

const QString kChunkOffsets = QStringLiteral("moov:trak:mdia:minf:stbl:stco");
const QString kFirstOfEach = QStringLiteral("1:1:1:1:1:1");

/// Moves the entries of a "stco" atom that point at or behind a place. False if one of them does not point
/// before the end.
bool moveEntries(QByteArray &atom, quint64 from, quint64 end, quint32 delta) {
  const quint32 count = qFromBigEndian<quint32>(atom.constData() + 12);
  for (qint64 i = 0; i < count; ++i) {
    const qsizetype at = 16 + 4 * i;
    if (at + 4 > atom.size()) break;
    const quint32 entry = qFromBigEndian<quint32>(atom.constData() + at);
    if (entry >= end) return false;
    if (entry >= from) qToBigEndian(entry + delta, atom.data() + at);
  }
  return true;
}

/// True if the audio is the same but for the place of the first "mdat".
bool canBeCorrected(const std::vector<MP4Layout::Place> &before, const std::vector<MP4Layout::Place> &after) {
  if (before.empty() || before.size() != after.size()) return false;
  for (size_t i = 0; i < before.size(); ++i) {
    if (before[i].size != after[i].size || (i > 0 && before[i].offset != after[i].offset)) return false;
  }
  return true;
}

}  // namespace

bool MP4TagWriter::adjustChunkOffsetsInAtomDataOriginalFile(QByteArray &image, const FileReader &original) {
  Source before(original), after{QByteArrayView(image)};
  const auto audioBefore = MP4Layout(before).audio(), audioAfter = MP4Layout(after).audio();
  if (!canBeCorrected(audioBefore, audioAfter)) return false;
  const quint64 oldPlace = audioBefore.front().offset, newPlace = audioAfter.front().offset;
  if (oldPlace == newPlace) return true;
  const quint64 place = atomwalk::offsetToAtomInAtNamePathIndexed(before, kChunkOffsets, kFirstOfEach);
  if (place == kNotFoundOffset || MP4Layout::hasOtherTables(before)) return false;
  QByteArray table = before.read(place, atomwalk::sizeOfAtomInAtOffsetName(before, place, nullptr));
  const quint64 count = ByteView{table}.u32(12);
  if (table.size() < 16 || count * 4 + 12 > quint64(table.size())) {
    BMLog("adjustChunkOffsets failed sanity check (%d > %qu)", qint64(count * 4 + 12), quint64(table.size()));
    return false;
  }
  // Chunks in a second "mdat", which stays, must not be moved with the first.
  const bool isOnly = audioBefore.size() == 1;
  const quint64 end = isOnly ? ~quint64(0) : oldPlace + audioBefore.front().size;
  if (!moveEntries(table, oldPlace, end, quint32(newPlace) - quint32(oldPlace))) return false;
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
    Source source{QByteArrayView(image)};
    const quint64 place = atomwalk::offsetToAtomInAtNamePathIndexed(source, path, indexes);
    if (place == kNotFoundOffset) return false;
    const quint64 size = atomwalk::sizeOfAtomInAtOffsetName(source, place, nullptr);
    const bool fits = size >= 20 && place + 20 <= quint64(image.size());
    if (fits) qToBigEndian(seconds, image.data() + place + 16);
  }
  return true;
}
