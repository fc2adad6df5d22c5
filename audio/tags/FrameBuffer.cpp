#include "audio/tags/FrameBuffer.h"

namespace {

constexpr qint64 kHeader = 10, kFlags = 2;

QByteArray plain(qint64 number, int length) {
  QByteArray bytes(length, '\0');
  for (int index = length; index-- > 0; number >>= 8) bytes[index] = char(number & 0xFF);
  return bytes;
}

QByteArray synchSafe(qint64 number) {
  QByteArray bytes(4, '\0');
  for (int index = 4; index-- > 0; number >>= 7) bytes[index] = char(number & 0x7F);
  return bytes;
}

}  // namespace

FrameBuffer::FrameBuffer(int major, bool synchSafeSizes)
    : version(major), isSynchSafe(major == 4 && synchSafeSizes), bytes(kHeader, '\0') {}

void FrameBuffer::addSize(qint64 size) {
  const int bits = version == 2 ? 24 : isSynchSafe ? 28 : 32;
  if (size >> bits != 0) isTooLarge = true;
  bytes += isSynchSafe ? synchSafe(size) : plain(size, version == 2 ? 3 : 4);
}

void FrameBuffer::addFrame(QByteArrayView id, QByteArrayView body, QByteArrayView rest) {
  bytes += id;
  addSize(body.size() + rest.size());
  if (version != 2) bytes.append(kFlags, '\0');
  bytes += body;
  bytes += rest;
}

void FrameBuffer::addRawFrame(QByteArrayView id, QByteArrayView flagsAndBody) {
  if (version == 2) return addFrame(id, flagsAndBody);
  if (flagsAndBody.size() < kFlags) return addFrame(id, {});
  bytes += id;
  addSize(flagsAndBody.size() - kFlags);
  bytes += flagsAndBody;
}

QByteArray FrameBuffer::finished() {
  const qint64 size = bytes.size() - kHeader;
  if (isTooLarge || size >> 28 != 0) return {};
  const char head[] = {'I', 'D', '3', char(version), 0, 0};
  bytes.replace(0, sizeof head, QByteArrayView(head, sizeof head));
  bytes.replace(sizeof head, 4, synchSafe(size));
  return bytes;
}
