#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <vector>

#include "audio/FileReader.h"

class Atom;
using AtomPtr = std::unique_ptr<Atom>;

/// One node of an MP4 file's box tree (ISO/IEC 14496-12, 4.2): a container of others, bytes in memory, or a
/// range of the file that is read when it is asked for. A tree must not outlive a change of its file. One
/// thread.
class Atom {
 public:
  static constexpr quint32 kFile = 0x46494c45;  // "FILE", the root, which is never written
  static constexpr quint32 kMeta = 0x6d657461;
  static constexpr quint32 kFree = 0x66726565;
  /// Containers inside each other; a file that goes deeper is none.
  static constexpr int kDeepest = 64;
  /// Atoms in one file: far more than any recorder writes, and few enough that a row of them never needs more
  /// memory than the file has bytes and a megabyte.
  static constexpr int kMost = 1 << 18;

  /// The tree of a whole file, without reading the audio. Throws TagError "bad size atom".
  static AtomPtr atomContainerFromFile(const std::shared_ptr<FileReader> &file);
  /// The tree of a range of a file.
  static AtomPtr atomContainerFromFileInRangeWithName(const std::shared_ptr<FileReader> &file, quint64 start,
                                                      quint64 length, quint32 name);
  /// A leaf without data.
  static AtomPtr atomWithName(quint32 name);
  /// True for the names of the resource "atomcontainers.dat", read once.
  static bool isRecognizedContainer(quint32 name);
  /// True while changes of size are paid for by "free" atoms. One flag for all.
  static bool autoSizing();
  static void setAutoSizing(bool on);

  quint32 name() const { return _name; }
  void setName(quint32 name) { _name = name; }
  /// The name read as Mac OS Roman.
  QString nameString() const;
  bool isContainer() const { return container; }
  const std::vector<AtomPtr> &contents() const { return _contents; }
  Atom *parent() const { return _parent; }
  /// The payload's bytes; of a container the sum of its children with their headers.
  quint64 size() const;
  /// The payload; null for a container. A range of a file is read at each call.
  QByteArray data() const;
  quint64 fileDataStart() const { return fileStart; }
  quint64 fileDataLength() const { return fileLength; }
  /// The text of a "data" payload; null below 9 bytes or if it is no UTF-8.
  QString stringValue() const;
  /// False for a text without a UTF-8 form.
  bool setStringValue(const QString &text);
  quint64 atomHash() const;
  QString shortDescription() const;
  QString description(int indentLevel = 0) const;

  void setData(const QByteArray &data);
  void setFileWithRange(const std::shared_ptr<FileReader> &file, quint64 start, quint64 length);
  void becomeContainer();
  /// Grows by zero bytes or shrinks; false for a container or without memory.
  bool setSize(quint64 size);
  Atom *nextSibling() const;
  /// Puts an atom behind the last of this one's parent; null without a parent.
  Atom *addSibling(AtomPtr atom);
  /// Takes this atom out of its parent, which destroys it; false if it has none.
  bool removeFromContainer();
  void removeAllChildren();
  /// Puts an atom at the end of this container.
  Atom *append(AtomPtr child);
  /// Lets a "free" atom behind this one, or behind one of its ancestors, absorb a change of so many bytes.
  /// False if none can.
  bool resizeSiblingFreeBy(qint64 delta);

  /// The node at a path such as "moov:udta:meta", whose first element names this node or a later sibling;
  /// with `create` missing ones are made. `indexes` such as "1:1:2" choose among atoms of one name. Null if
  /// there is none.
  Atom *childAtAtomPathCreate(const QString &path, bool create = false);
  Atom *childAtAtomPathCreateIndexed(const QString &path, bool create, const QString &indexes);

  /// The atom as a file holds it, header included. Reads what is still in the file; throws TagError if that
  /// is not there any more.
  QByteArray flattenedData() const;

 private:
  explicit Atom(quint32 name) : _name(name) {}
  void flattenInto(QByteArray &bytes) const;
  Atom *makeFirstChild(quint32 name, bool asContainer);

  quint32 _name = 0;
  bool container = false;
  std::vector<AtomPtr> _contents;
  QByteArray mData;
  std::shared_ptr<FileReader> mFile;
  quint64 fileStart = 0;
  quint64 fileLength = 0;
  Atom *_parent = nullptr;
  /// Which of its parent's children this is.
  size_t place = 0;
};
