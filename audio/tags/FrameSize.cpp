#include "audio/tags/FrameSize.h"

namespace {

constexpr qint64 kHeader = 10;

bool isFrameIDAt(ByteView tag, qint64 at) {
  for (qint64 index = at; index < at + 4; ++index) {
    const quint8 letter = tag.u8(index);
    if (!(letter >= 'A' && letter <= 'Z') && !(letter >= '0' && letter <= '9')) return false;
  }
  return true;
}

bool isPlausible(ByteView tag, qint64 frame, qint64 size) {
  const qint64 end = frame + kHeader + size;
  if (end >= tag.size()) return end == tag.size();
  if (tag.size() - kHeader - 4 > frame + size && isFrameIDAt(tag, end)) return true;
  return tag.u32(end) == 0;
}

}  // namespace

std::optional<qint64> frameSizeAt(ByteView tag, qint64 frame, bool assumeSynchSafe) {
  const qint64 plain = tag.u32(frame + 4);
  if (plain < 128) return plain;
  const qint64 safe = tag.synchSafe(frame + 4);
  const bool plainFits = isPlausible(tag, frame, plain);
  const bool safeFits = isPlausible(tag, frame, safe);
  if (safeFits && (assumeSynchSafe || !plainFits)) return safe;
  if (plainFits) return plain;
  return {};
}
