#include <algorithm>
#include <vector>

#include "platform/qt/PropertyListGuard.h"

namespace {

constexpr qsizetype kHeader = 8, kTrailer = 32;
constexpr qint64 kNodeCost = 16;

/// A binary property list's table of objects, read with every access checked.
class ObjectTable {
 public:
  explicit ObjectTable(QByteArrayView all) : bytes(all) {}

  /// Reads the trailer; false if it points outside.
  bool open() {
    if (bytes.size() < kHeader + kTrailer) return false;
    const qsizetype trailer = bytes.size() - kTrailer;
    offsetSize = quint8(bytes[trailer + 6]);
    referenceSize = quint8(bytes[trailer + 7]);
    count = number(trailer + 8, 8);
    root = number(trailer + 16, 8);
    table = number(trailer + 24, 8);
    if (offsetSize < 1 || offsetSize > 8 || referenceSize < 1 || referenceSize > 8) return false;
    const auto room = quint64(trailer);
    return count > 0 && root < count && table < room && count <= (room - table) / offsetSize;
  }

  /// Where the object's marker is; behind the end if its entry is bad.
  quint64 place(quint64 object) const { return number(qsizetype(table + object * offsetSize), offsetSize); }

  struct Object {
    bool isContainer = false;
    quint64 references = 0;  // their number
    quint64 start = 0;       // where the first is
    qint64 cost = kNodeCost;
  };

  /// False if the object does not lie inside.
  bool read(quint64 object, Object &result) const {
    const quint64 at = place(object);
    const auto end = quint64(bytes.size() - kTrailer);
    if (at < quint64(kHeader) || at >= end) return false;
    const int kind = quint8(bytes[qsizetype(at)]) >> 4;
    quint64 length = quint8(bytes[qsizetype(at)]) & 15;
    result.start = at + 1;
    if (kind >= 4 && length == 15 && !readLength(result.start, end, length)) return false;
    result.isContainer = kind == 10 || kind == 13;
    if (result.isContainer) {
      if (length > end) return false;
      result.references = kind == 13 ? length * 2 : length;
      return result.references <= (end - result.start) / referenceSize;
    }
    if (kind >= 4 && kind <= 7) result.cost += qint64(std::min(length, end)) * (kind == 6 ? 2 : 1);
    return true;
  }

  quint64 reference(const Object &object, quint64 index) const {
    return number(qsizetype(object.start + index * referenceSize), referenceSize);
  }

  quint64 count = 0, root = 0;

 private:
  /// A length of 15 or more: an integer object behind the marker.
  bool readLength(quint64 &at, quint64 end, quint64 &length) const {
    if (at >= end) return false;
    const int marker = quint8(bytes[qsizetype(at)]);
    const int size = 1 << (marker & 15);
    if (marker >> 4 != 1 || size > 8 || quint64(size) >= end - at) return false;
    length = number(qsizetype(at + 1), size);
    at += 1 + quint64(size);
    return true;
  }

  /// Big-endian; the caller has checked the place.
  quint64 number(qsizetype at, int size) const {
    quint64 value = 0;
    for (int index = 0; index < size; ++index) value = value << 8 | quint8(bytes[at + index]);
    return value;
  }

  const QByteArrayView bytes;
  int offsetSize = 0, referenceSize = 0;
  quint64 table = 0;
};

/// Walks from the root and measures each object once, however often it is named.
class Walk {
 public:
  Walk(const ObjectTable &objects, qsizetype size, int depthLimit, qint64 unfoldedPerByte)
      : table(objects), deepest(depthLimit), referencesLeft(size), most(size * unfoldedPerByte) {}

  QString run() {
    measured.resize(table.count);
    QString reason = enter(table.root);
    while (reason.isEmpty() && !open.empty()) {
      if (open.back().next < open.back().object.references) {
        reason = follow(table.reference(open.back().object, open.back().next++));
      } else {
        leave();
      }
      if (reason.isEmpty() && measured[table.root].cost > most) reason = tooMuch();
    }
    return reason;
  }

 private:
  struct Measured {
    qint64 cost = 0;  // 0 for one not met yet
    int height = 0;
    bool isOpen = false;
  };
  struct Open {
    quint64 index;
    ObjectTable::Object object;
    quint64 next = 0;
  };

  static QString tooMuch() { return QStringLiteral("unfolds to far more than its size"); }

  QString enter(quint64 index) {
    Open entry{index, {}};
    if (!table.read(index, entry.object)) return QStringLiteral("an object lies outside the file");
    // Objects that overlap could name more references than the file has bytes.
    referencesLeft -= qint64(entry.object.references);
    if (referencesLeft < 0) return QStringLiteral("the objects overlap");
    measured[index] = {entry.object.cost, 1, entry.object.isContainer};
    if (entry.object.isContainer) open.push_back(entry);
    if (int(open.size()) > deepest) return QStringLiteral("nested deeper than %1").arg(deepest);
    return {};
  }

  QString follow(quint64 index) {
    if (index >= table.count) return QStringLiteral("a reference leads nowhere");
    if (measured[index].isOpen) return QStringLiteral("a container holds itself");
    const auto parent = open.size() - 1;
    if (measured[index].cost == 0) {
      QString reason = enter(index);
      if (!reason.isEmpty() || measured[index].isOpen) return reason;
    }
    return add(open[parent].index, measured[index]);
  }

  QString add(quint64 parent, const Measured &member) {
    Measured &sum = measured[parent];
    sum.cost = std::min(sum.cost + member.cost, most + 1);
    sum.height = std::max(sum.height, member.height + 1);
    if (int(open.size()) + member.height - 1 > deepest) {
      return QStringLiteral("nested deeper than %1").arg(deepest);
    }
    return {};
  }

  /// The container is measured: its parent gets its share.
  void leave() {
    const quint64 index = open.back().index;
    measured[index].isOpen = false;
    open.pop_back();
    if (!open.empty()) {
      Measured &sum = measured[open.back().index];
      sum.cost = std::min(sum.cost + measured[index].cost, most + 1);
      sum.height = std::max(sum.height, measured[index].height + 1);
    }
  }

  const ObjectTable &table;
  const int deepest;
  qint64 referencesLeft;
  const qint64 most;
  std::vector<Measured> measured;
  std::vector<Open> open;
};

}  // namespace

QString reasonToRefuseBinary(QByteArrayView bytes, int deepest, qint64 unfoldedPerByte) {
  ObjectTable table(bytes);
  if (!table.open()) return QStringLiteral("the table of objects lies outside the file");
  return Walk(table, bytes.size(), deepest, unfoldedPerByte).run();
}
