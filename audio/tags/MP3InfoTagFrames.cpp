// The frames that an MPEG file's tag holds.

#include "audio/tags/MP3InfoTag.h"
#include "support/BMLog.h"

namespace {

template <class Frames>
auto find(Frames &frames, QByteArrayView id) {
  return std::find_if(frames.begin(), frames.end(), [id](const auto &frame) { return frame.id == id; });
}

bool isMissing(const FrameValue &value) {
  const auto *image = std::get_if<ID3ImagePtr>(&value);
  return image && !*image;
}

}  // namespace

const FrameValue *MP3InfoTag::firstObjectForFrameIDOrID(QByteArrayView id, QByteArrayView otherID) const {
  for (const QByteArrayView wanted : {id, otherID}) {
    const auto frame = find(mFrames, wanted);
    if (frame != mFrames.end()) return &frame->value;
  }
  return nullptr;
}

QString MP3InfoTag::firstStringForFrameIDOrID(QByteArrayView id, QByteArrayView otherID) const {
  const FrameValue *value = firstObjectForFrameIDOrID(id, otherID);
  const auto *texts = value ? std::get_if<QStringList>(value) : nullptr;
  return texts && !texts->isEmpty() ? texts->front() : QString();
}

void MP3InfoTag::setObjectForFrameID(FrameValue value, const QByteArray &id) {
  const auto frame = find(mFrames, id);
  if (frame == mFrames.end()) return addObjectForFrameID(std::move(value), id);
  frame->value = std::move(value);
}

void MP3InfoTag::addObjectForFrameID(FrameValue value, const QByteArray &id) {
  if (id.isNull() || isMissing(value)) {
    BMLog("addObject with nil param!");
    return;
  }
  mFrames.push_back({id, std::move(value)});
}

void MP3InfoTag::removeAllObjectsForFrameID(QByteArrayView id) {
  std::erase_if(mFrames, [id](const Frame &frame) { return frame.id == id; });
}

void MP3InfoTag::setStringForFrameID(const QString &text, const QByteArray &id) {
  setObjectForFrameID(QStringList{text}, id);
}

void MP3InfoTag::setStringForV22OrForV24(const QString &text, const QByteArray &v22, const QByteArray &v24) {
  const QByteArray &id = isVersion22() ? v22 : v24;
  tagModified = true;
  if (text.isEmpty()) {
    removeAllObjectsForFrameID(id);
  } else {
    setStringForFrameID(text, id);
  }
}
