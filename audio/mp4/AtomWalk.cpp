#include "audio/mp4/AtomWalk.h"

#include <QStringList>

#include "audio/ByteView.h"
#include "audio/MacRoman.h"
#include "audio/TagError.h"
#include "support/BMLog.h"

namespace atomwalk {

namespace {

constexpr quint64 kHeader = 8;
constexpr quint64 kWideHeader = 16;

[[noreturn]] void throwBadSize() {
  throw TagError("bad size atom");
}

}  // namespace

QByteArray Source::read(quint64 offset, quint64 count) const {
  if (offset >= length()) return {};
  const quint64 room = std::min(count, length() - offset);
  return file ? file->read(qint64(offset), qint64(room))
              : memory.sliced(qsizetype(offset), qsizetype(room)).toByteArray();
}

QByteArrayView Source::headerAt(quint64 offset) {
  constexpr quint64 kWindow = 1024;
  if (offset >= length()) return {};
  const quint64 count = std::min(kWideHeader, length() - offset);
  if (!file) return memory.sliced(qsizetype(offset), qsizetype(count));
  const bool isInside = offset >= windowStart && offset + count <= windowStart + quint64(window.size());
  if (!isInside) {
    window = file->read(qint64(offset), qint64(kWindow));
    windowStart = offset;
  }
  return QByteArrayView(window)
      .sliced(qsizetype(offset - windowStart))
      .first(std::min(qsizetype(count), window.size() - qsizetype(offset - windowStart)));
}

QString nameText(quint32 name) {
  const char bytes[] = {char(name >> 24), char(name >> 16), char(name >> 8), char(name)};
  return textOfMacRoman(QByteArrayView(bytes, 4));
}

quint64 sizeOfAtomInAtOffsetName(Source &source, quint64 offset, quint32 *name) {
  const quint64 length = source.length();
  if (source.isFile() && (length < kHeader || offset > length - kHeader)) {
    BMLog("sizeOfAtomIn: %qu + 8 > %qu", offset, length);
    throwBadSize();
  }
  const ByteView header{source.headerAt(offset)};
  const quint32 size = header.u32(0);
  if (name) *name = header.u32(4);
  // A file's last 16 bytes hold no wide header, a buffer's last 8.
  const quint64 needed = source.isFile() ? kWideHeader : kHeader;
  if (size == 1 && length > needed && length - needed > offset) {
    const quint64 wide = header.u64(8);
    if (wide < kHeader) throwBadSize();
    return wide;
  }
  if (size == 0) return length - std::min(length, offset);
  if (size >= kHeader) return size;
  BMLog("invalid size %qu for atom '%@' in %@", quint64(size), nameText(header.u32(4)),
        source.isFile() ? QStringLiteral("file") : QStringLiteral("data"));
  throwBadSize();
}

quint64 offsetToAtomInAtNamePathIndexed(Source source, const QString &path, const QString &indexes) {
  const QStringList names = path.split(u':'), numbers = indexes.split(u':');
  const quint64 length = source.length();
  quint32 wanted = macRomanCode(names.front());
  qsizetype element = 0;
  qint64 count = 0;
  quint64 offset = 0;
  while (length > kHeader && offset < length - kHeader) {
    quint32 name = 0;
    const quint64 size = sizeOfAtomInAtOffsetName(source, offset, &name);
    const bool isNamed = name == wanted && names[element].size() == 4;
    if (isNamed && ++count == numbers.value(element).toLongLong()) {
      if (++element == names.size()) return offset;
      wanted = macRomanCode(names[element]);
      count = 0;
      offset += kHeader;
    } else {
      if (size > length - offset) break;
      offset += size;
    }
  }
  return kNotFoundOffset;
}

QByteArray atomDataInAtNamePathIndexed(Source source, const QString &path, const QString &indexes) {
  const quint64 offset = offsetToAtomInAtNamePathIndexed(source, path, indexes);
  if (offset == kNotFoundOffset) return {};
  const quint64 size = sizeOfAtomInAtOffsetName(source, offset, nullptr);
  if (size == 0) return {};
  const QByteArray payload = source.read(offset + kHeader, size - kHeader);
  return payload.isNull() ? QByteArray("") : payload;
}

QByteArray atomDataInAtNamePath(const Source &source, const QString &path) {
  QString indexes = QStringLiteral("1");
  for (qsizetype i = path.count(u':'); i > 0; --i) indexes += QStringLiteral(":1");
  return atomDataInAtNamePathIndexed(source, path, indexes);
}

}  // namespace atomwalk
