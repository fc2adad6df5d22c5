#pragma once

#include <QByteArrayView>
#include <QtEndian>
#include <algorithm>

/// Bytes of a file, which may lie: every read is checked, and a byte that is not there reads as 0. Numbers
/// are big-endian. Does not own the bytes. Any thread.
class ByteView {
 public:
  ByteView() = default;
  explicit(false) ByteView(QByteArrayView bytes) : view(bytes) {}

  qint64 size() const { return view.size(); }
  bool isEmpty() const { return view.isEmpty(); }
  QByteArrayView bytes() const { return view; }

  quint8 u8(qint64 at) const { return at >= 0 && at < view.size() ? quint8(view[at]) : 0; }
  quint16 u16(qint64 at) const { return quint16(u8(at) << 8 | u8(at + 1)); }
  quint32 u24(qint64 at) const { return quint32(u8(at)) << 16 | u16(at + 1); }
  quint32 u32(qint64 at) const { return quint32(u16(at)) << 16 | u16(at + 2); }
  quint64 u64(qint64 at) const { return quint64(u32(at)) << 32 | u32(at + 4); }
  /// Four bytes of seven bits each, the highest first.
  quint32 synchSafe(qint64 at) const {
    return quint32(u8(at) & 0x7F) << 21 | quint32(u8(at + 1) & 0x7F) << 14 | quint32(u8(at + 2) & 0x7F) << 7 |
           quint32(u8(at + 3) & 0x7F);
  }

  /// What there is of a range: cut at the ends of the bytes; empty outside.
  ByteView slice(qint64 at, qint64 length) const {
    const qint64 begin = std::clamp<qint64>(at, 0, view.size());
    const qint64 room = view.size() - begin;
    return view.sliced(begin, std::clamp<qint64>(at < 0 ? 0 : length, 0, room));
  }
  ByteView from(qint64 at) const { return slice(at, view.size()); }
  /// True if the bytes at an index are these.
  bool hasAt(qint64 at, QByteArrayView expected) const {
    return at >= 0 && at <= view.size() - expected.size() && view.sliced(at, expected.size()) == expected;
  }
  QByteArray copy() const { return view.toByteArray(); }

 private:
  QByteArrayView view;
};
