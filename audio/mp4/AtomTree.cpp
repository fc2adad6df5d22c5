#include <QFile>
#include <QSet>
#include <QtEndian>

#include "audio/MacRoman.h"
#include "audio/TagError.h"
#include "audio/mp4/Atom.h"
#include "audio/mp4/AtomWalk.h"
#include "platform/Platform.h"

namespace {

/// The names of the resource; none without it.
QSet<quint32> readContainerNames() {
  QSet<quint32> names;
  QFile file(platform().bundle.resourceFolder + u"/atomcontainers.dat"_qs);
  if (!file.open(QIODevice::ReadOnly)) return names;
  const QByteArray bytes = file.readAll();
  for (qsizetype at = 0; at + 4 <= bytes.size(); at += 4) {
    names.insert(qFromBigEndian<quint32>(bytes.constData() + at));
  }
  return names;
}

/// Builds the tree of a range, level by level.
class TreeBuilder {
 public:
  explicit TreeBuilder(const std::shared_ptr<FileReader> &reader) : file(reader), source(*reader) {}

  void fill(Atom &into, quint64 start, quint64 end, int depth) {
    if (depth > Atom::kDeepest) throw TagError("bad size atom");
    for (quint64 offset = start; offset < end;) {
      if (++count > Atom::kMost) throw TagError("bad size atom");
      quint32 name = 0;
      const quint64 size = atomwalk::sizeOfAtomInAtOffsetName(source, offset, &name);
      Atom *child = into.append(Atom::atomWithName(name));
      if (Atom::isRecognizedContainer(name)) {
        if (size > end - offset) throw TagError("bad size atom");
        const quint64 header = name == Atom::kMeta ? 12 : 8;
        child->becomeContainer();
        fill(*child, offset + header, offset + size, depth + 1);
      } else {
        child->setFileWithRange(file, offset + 8, size - 8);
      }
      if (size > end - offset) return;
      offset += size;
    }
  }

 private:
  const std::shared_ptr<FileReader> file;
  atomwalk::Source source;
  int count = 0;
};

}  // namespace

bool Atom::isRecognizedContainer(quint32 name) {
  static const QSet<quint32> names = readContainerNames();
  return names.contains(name);
}

AtomPtr Atom::atomContainerFromFile(const std::shared_ptr<FileReader> &file) {
  return atomContainerFromFileInRangeWithName(file, 0, quint64(file->size()), kFile);
}

AtomPtr Atom::atomContainerFromFileInRangeWithName(const std::shared_ptr<FileReader> &file, quint64 start,
                                                   quint64 length, quint32 name) {
  AtomPtr root = atomWithName(name);
  root->becomeContainer();
  TreeBuilder(file).fill(*root, start, start + length, 0);
  return root;
}

Atom *Atom::childAtAtomPathCreate(const QString &path, bool create) {
  QString indexes = QStringLiteral("1");
  for (qsizetype i = path.count(u':'); i > 0; --i) indexes += QStringLiteral(":1");
  return childAtAtomPathCreateIndexed(path, create, indexes);
}

Atom *Atom::childAtAtomPathCreateIndexed(const QString &path, bool create, const QString &indexes) {
  const QStringList names = path.split(u':'), numbers = indexes.split(u':');
  qsizetype element = 0;
  qint64 count = 0;
  quint32 wanted = macRomanCode(names.front());
  for (Atom *atom = this; atom;) {
    Atom *next = nullptr;
    const bool isNamed = atom->_name == wanted && names[element].size() == 4;
    if (isNamed && ++count == numbers.value(element).toLongLong()) {
      if (++element == names.size()) return atom;
      wanted = macRomanCode(names[element]);
      const bool hasMore = element + 1 < names.size();
      if (create && atom->container && atom->_contents.empty()) atom->makeFirstChild(wanted, hasMore);
      next = atom->_contents.empty() ? nullptr : atom->_contents.front().get();
      count = 0;
    } else {
      next = atom->nextSibling();
    }
    if (!next && create) {
      next = atom->addSibling(atomWithName(wanted));
      if (next && element + 1 < names.size()) next->becomeContainer();
    }
    atom = next;
  }
  return nullptr;
}

Atom *Atom::makeFirstChild(quint32 name, bool asContainer) {
  Atom *child = append(atomWithName(name));
  resizeSiblingFreeBy(-8);
  if (asContainer) child->becomeContainer();
  return child;
}
