// Any bytes as an MP4 file: a tag or none, the same twice, no larger than the file; a tree that flattens to
// what can be read again; paths that are found or not.

#include "audio/TagError.h"
#include "audio/mp4/AACInfoTag.h"
#include "audio/mp4/Atom.h"
#include "audio/mp4/AtomWalk.h"
#include "fuzz/AtomInput.h"

namespace {

void walk(const QByteArray &data) {
  for (const char16_t *path : {u"moov:trak:mdia:minf:stbl:stco", u"moov:udta:meta", u"mdat"}) {
    try {
      const QByteArray payload =
          atomwalk::atomDataInAtNamePath(QByteArrayView(data), QString::fromUtf16(path));
      require(payload.size() <= data.size());
    } catch (const TagError &) {
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, size_t size) {
  startAtoms();
  static InputFile file;
  const QByteArray data(reinterpret_cast<const char *>(bytes), qsizetype(size));
  const QString path = file.holding(data);
  const auto tag = AACInfoTag::tagWithMP4File(path), second = AACInfoTag::tagWithMP4File(path);
  require((tag == nullptr) == (second == nullptr));
  walk(data);
  if (!tag) return 0;
  require(isEqual(tag->attributes(), second->attributes()));
  require(tag->images().size() == second->images().size());
  require(tag->numberOfArtworkBytes() <= quint64(size));
  const AtomPtr root = Atom::atomContainerFromFile(std::make_shared<FileReader>(path));
  if (root->size() <= quint64(size)) require(quint64(root->flattenedData().size()) >= root->size());
  return 0;
}
