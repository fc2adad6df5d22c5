#pragma once

#include <QByteArray>

/// ID3 tags of exact bytes, for tests and for the seeds of fuzz targets.
namespace id3 {

/// A text with its zero bytes.
template <size_t N>
QByteArray bytes(const char (&text)[N]) {
  return {text, N - 1};
}

inline QByteArray number(quint32 value, int length) {
  QByteArray result;
  while (length-- > 0) result += char(value >> (length * 8) & 0xFF);
  return result;
}

inline QByteArray synchSafe(quint32 value) {
  QByteArray result;
  for (int shift = 21; shift >= 0; shift -= 7) result += char(value >> shift & 0x7F);
  return result;
}

/// A frame's text in ISO Latin-1.
inline QByteArray latin(const QByteArray &text) {
  return bytes("\0") + text;
}

/// A frame of version 2.2.
inline QByteArray frame22(const QByteArray &id, const QByteArray &body) {
  return id + number(quint32(body.size()), 3) + body;
}

/// A frame of version 2.3, or of 2.4 with a plain size.
inline QByteArray frame23(const QByteArray &id, const QByteArray &body,
                          const QByteArray &flags = bytes("\0\0")) {
  return id + number(quint32(body.size()), 4) + flags + body;
}

/// A frame with a synch-safe size.
inline QByteArray frame24(const QByteArray &id, const QByteArray &body,
                          const QByteArray &flags = bytes("\0\0")) {
  return id + synchSafe(quint32(body.size())) + flags + body;
}

/// A whole tag of version 2.
inline QByteArray tag(int major, const QByteArray &frames, quint8 flags = 0) {
  return "ID3" + number(quint32(major), 1) + bytes("\0") + char(flags) + synchSafe(quint32(frames.size())) +
         frames;
}

/// A version 1 block: pairs of (offset, bytes) over zeros, without a genre.
inline QByteArray block(std::initializer_list<std::pair<int, QByteArray>> fields) {
  QByteArray result(128, '\0');
  result.replace(0, 3, "TAG");
  result[127] = char(255);
  for (const auto &[at, text] : fields) result.replace(at, text.size(), text);
  return result;
}

/// Bytes that stand for audio: no two places look alike.
inline QByteArray audio(int size = 400) {
  QByteArray result;
  for (quint32 at = 0; result.size() < size; ++at)
    result += char(0xA5) + number(at * 2654435761u, 4) + number(at, 3);
  return result.first(size);
}

/// A picture frame's body of versions 2.3 and 2.4.
inline QByteArray picture(const QByteArray &mime, quint8 type, const QByteArray &description,
                          const QByteArray &data) {
  return bytes("\0") + mime + bytes("\0") + char(type) + description + bytes("\0") + data;
}

}  // namespace id3
