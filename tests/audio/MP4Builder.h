#pragma once

#include <QByteArray>
#include <QtEndian>
#include <initializer_list>

/// Byte-exact MP4 files for tests, atom by atom.
namespace mp4 {

inline QByteArray be(quint32 number) {
  QByteArray bytes(4, '\0');
  qToBigEndian(number, bytes.data());
  return bytes;
}

/// An atom of a name in Latin-1 with its payload.
inline QByteArray atom(const char *name, const QByteArray &payload) {
  return be(quint32(payload.size()) + 8) + QByteArray(name, 4) + payload;
}

inline QByteArray atom(const char *name, std::initializer_list<QByteArray> children) {
  QByteArray payload;
  for (const QByteArray &child : children) payload += child;
  return atom(name, payload);
}

/// An item of "ilst" with one value.
inline QByteArray item(const char *name, const QByteArray &value, quint32 type = 1) {
  return atom(name, atom("data", be(type) + be(0) + value));
}

inline QByteArray text(const char *name, const char *utf8) {
  return item(name, QByteArray(utf8));
}

inline QByteArray free(int bytes) {
  return atom("free", QByteArray(bytes, '\0'));
}

/// "mvhd" of the 32-bit form.
inline QByteArray movieHeader(quint32 scale, quint32 duration) {
  return atom("mvhd", be(0) + be(1) + be(2) + be(scale) + be(duration) + QByteArray(80, '\0'));
}

/// A sample entry of a name with its "esds"; rates in Hz and bits per second.
inline QByteArray sampleTable(const char *name, quint16 sampleRate, quint32 bitRate) {
  QByteArray entry(28, '\0');
  qToBigEndian(sampleRate, entry.data() + 24);
  const QByteArray esds = atom("esds", QByteArray(22, '\0') + be(bitRate) + QByteArray(10, '\0'));
  return atom("stsd", be(0) + be(1) + atom(name, entry + esds));
}

inline QByteArray chunkOffsets(std::initializer_list<quint32> offsets) {
  QByteArray payload = be(0) + be(quint32(offsets.size()));
  for (const quint32 offset : offsets) payload += be(offset);
  return atom("stco", payload);
}

inline QByteArray track(const QByteArray &sampleDescription, const QByteArray &offsets) {
  const QByteArray table = atom("stbl", {sampleDescription, offsets});
  const QByteArray media = atom("mdia", {atom("mdhd", QByteArray(24, '\1')), atom("minf", {table})});
  return atom("trak", {atom("tkhd", QByteArray(84, '\1')), media});
}

/// "udta" with its "meta": items and what stands behind "ilst".
inline QByteArray userData(const QByteArray &items, const QByteArray &behindList = {}) {
  const QByteArray handler = atom("hdlr", be(0) + be(0) + QByteArray("mdirappl") + QByteArray(9, '\0'));
  return atom("udta", {atom("meta", be(0) + handler + atom("ilst", items) + behindList)});
}

inline QByteArray fileType() {
  return atom("ftyp", QByteArray("M4A \0\0\0\0M4A ", 12));
}

}  // namespace mp4
