#include "audio/mp4/Atom.h"

#include <QStringDecoder>
#include <QtEndian>
#include <algorithm>
#include <atomic>
#include <limits>

#include "audio/TagError.h"
#include "audio/mp4/AtomWalk.h"
#include "support/BMLog.h"

namespace {

std::atomic<bool> paysWithFree{false};

constexpr qsizetype kDataHeader = 8;
/// The type of a text in an item's "data": UTF-8.
constexpr char kTextHeader[kDataHeader] = {0, 0, 0, 1, 0, 0, 0, 0};

bool isWellFormed(const QString &text) {
  return text.isValidUtf16();
}

}  // namespace

bool Atom::autoSizing() {
  return paysWithFree;
}

void Atom::setAutoSizing(bool on) {
  paysWithFree = on;
}

AtomPtr Atom::atomWithName(quint32 name) {
  return AtomPtr(new Atom(name));
}

QString Atom::nameString() const {
  return atomwalk::nameText(_name);
}

quint64 Atom::size() const {
  if (mFile) return fileLength;
  if (!container) return quint64(mData.size());
  quint64 sum = 0;
  for (const AtomPtr &child : _contents) sum += 8 + child->size();
  return sum;
}

QByteArray Atom::data() const {
  if (container) return {};
  if (mFile) return mFile->read(qint64(fileStart), qint64(fileLength));
  return mData;
}

QString Atom::stringValue() const {
  if (container || size() <= quint64(kDataHeader)) return {};
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QByteArray bytes = data();
  const QString text = decoder(QByteArrayView(bytes).sliced(std::min(kDataHeader, bytes.size())));
  return decoder.hasError() ? QString() : text;
}

bool Atom::setStringValue(const QString &text) {
  if (!isWellFormed(text)) return false;
  setData(QByteArray(kTextHeader, kDataHeader) + text.toUtf8());
  return true;
}

quint64 Atom::atomHash() const {
  quint64 hash = 0, index = 0;
  for (const char byte : data()) hash += quint64(uchar(byte)) * index++;
  return hash;
}

void Atom::setData(const QByteArray &data) {
  const quint64 before = size();
  container = false;
  _contents.clear();
  mFile.reset();
  fileStart = fileLength = 0;
  mData = data;
  if (autoSizing() && before != size()) resizeSiblingFreeBy(qint64(before) - qint64(size()));
}

void Atom::setFileWithRange(const std::shared_ptr<FileReader> &file, quint64 start, quint64 length) {
  const auto end = quint64(file->size());
  const quint64 room = end - std::min(end, start);
  if (length > room) {
    BMLog("%@ (%@) will trunc setFile:withRange: %u + %u (%u) > %qu", shortDescription(), nameString(), start,
          length, start + length, end);
    length = room;
  }
  container = false;
  _contents.clear();
  mData = {};
  mFile = file;
  fileStart = start;
  fileLength = length;
}

void Atom::becomeContainer() {
  mData = {};
  mFile.reset();
  fileStart = fileLength = 0;
  container = true;
}

bool Atom::setSize(quint64 newSize) {
  if (container || newSize > quint64(std::numeric_limits<qint32>::max())) return false;
  QByteArray bytes = data();
  bytes.resize(qsizetype(newSize), '\0');
  setData(bytes);
  return true;
}

Atom *Atom::nextSibling() const {
  const bool isLast = !_parent || place + 1 >= _parent->_contents.size();
  return isLast ? nullptr : _parent->_contents[place + 1].get();
}

Atom *Atom::append(AtomPtr child) {
  child->_parent = this;
  child->place = _contents.size();
  _contents.push_back(std::move(child));
  return _contents.back().get();
}

Atom *Atom::addSibling(AtomPtr atom) {
  if (!_parent) return nullptr;
  Atom *added = _parent->append(std::move(atom));
  if (autoSizing()) added->resizeSiblingFreeBy(-qint64(8 + added->size()));
  return added;
}

bool Atom::removeFromContainer() {
  if (!_parent) return false;
  if (autoSizing()) resizeSiblingFreeBy(qint64(size()) + 8);
  std::vector<AtomPtr> &row = _parent->_contents;
  for (size_t behind = place + 1; behind < row.size(); ++behind) --row[behind]->place;
  row.erase(row.begin() + qptrdiff(place));
  return true;
}

void Atom::removeAllChildren() {
  _contents.clear();
}

bool Atom::resizeSiblingFreeBy(qint64 delta) {
  for (Atom *level = this; level; level = level->_parent) {
    for (Atom *atom = level->nextSibling(); atom; atom = atom->nextSibling()) {
      if (atom->_name != kFree || atom->container) continue;
      const quint64 room = atom->size();
      if (delta < 0 && room <= quint64(-delta)) continue;
      const bool was = autoSizing();
      setAutoSizing(false);
      const bool done = atom->setSize(quint64(qint64(room) + delta));
      setAutoSizing(was);
      if (done) return true;
    }
  }
  return false;
}

QByteArray Atom::flattenedData() const {
  QByteArray bytes;
  bytes.reserve(qsizetype(size() + 64));
  flattenInto(bytes);
  return bytes;
}

void Atom::flattenInto(QByteArray &bytes) const {
  constexpr qsizetype kHeader = 8;
  const qsizetype start = bytes.size();
  bytes.append(kHeader, '\0');
  if (container && _name == kMeta) bytes.append(4, '\0');
  for (const AtomPtr &child : _contents) child->flattenInto(bytes);
  if (mFile) {
    const auto length = qsizetype(fileLength);
    bytes.resize(bytes.size() + length);
    // What could not be read must not be written back as if it were all.
    const qint64 read = mFile->readInto(qint64(fileStart), bytes.data() + bytes.size() - length, length);
    if (read != length) throw TagError("a part of the file cannot be read");
  } else if (!container) {
    bytes += mData;
  }
  const auto total = quint64(bytes.size() - start);
  const bool isWide = total > std::numeric_limits<quint32>::max();
  if (isWide) bytes.insert(start + kHeader, kHeader, '\0');
  qToBigEndian(isWide ? quint32(1) : quint32(total), bytes.data() + start);
  qToBigEndian(_name, bytes.data() + start + 4);
  if (isWide) qToBigEndian(total + quint64(kHeader), bytes.data() + start + kHeader);
}

QString Atom::shortDescription() const {
  const QString head = QStringLiteral("<Atom 0x%1 '%2': ").arg(quintptr(this), 0, 16).arg(nameString());
  if (!container) {
    return head + QStringLiteral("%1 bytes (%2 hash)>").arg(size()).arg(atomHash());
  }
  return head + QStringLiteral("contains %1 %2>")
                    .arg(_contents.size())
                    .arg(_contents.size() == 1 ? QStringLiteral("item") : QStringLiteral("items"));
}

QString Atom::description(int indentLevel) const {
  QString text = QStringLiteral("    ").repeated(indentLevel) + shortDescription();
  for (const AtomPtr &child : _contents) text += u'\n' + child->description(indentLevel + 1);
  return text;
}
