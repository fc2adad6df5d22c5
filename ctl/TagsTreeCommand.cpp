#include "ctl/TagsTreeCommand.h"

#include "audio/ByteView.h"
#include "audio/FileReader.h"
#include "audio/mp4/Atom.h"
#include "audio/mp4/AtomWalk.h"
#include "ctl/Options.h"
#include "ctl/RowText.h"
#include "ctl/Session.h"
#include "ctl/TagFacts.h"

namespace {

constexpr quint32 kData = 0x64617461;

/// Prints the atoms of a file: where each header is, how many bytes it takes with what follows, its name.
class AtomPrinter {
 public:
  AtomPrinter(const FileReader &reader, Terminal &printedOn)
      : file(reader), source(reader), terminal(printedOn) {}

  void print(const Atom &container, quint64 offset, int depth) {
    for (const AtomPtr &atom : container.contents()) {
      const quint64 size = atomwalk::sizeOfAtomInAtOffsetName(source, offset, nullptr);
      terminal.print(QStringLiteral("%1 %2  ").arg(offset, 10).arg(size, 10) +
                     QStringLiteral("  ").repeated(depth) + printable(atom->nameString()) + textOf(*atom));
      const quint64 header = atom->name() == Atom::kMeta ? 12 : 8;
      if (atom->isContainer()) print(*atom, offset + header, depth + 1);
      offset += size;
    }
  }

 private:
  /// The start of an item's value, if it is a text.
  QString textOf(const Atom &atom) const {
    constexpr qint64 kHeader = 8, kEnough = 256;
    if (atom.name() != kData || atom.isContainer()) return {};
    const QByteArray bytes =
        file.read(qint64(atom.fileDataStart()), std::min(qint64(atom.fileDataLength()), kHeader + kEnough));
    const ByteView payload{QByteArrayView(bytes)};
    if (payload.size() <= kHeader || payload.u24(1) != 1) return {};
    const QString text = QString::fromUtf8(payload.from(kHeader).bytes());
    return QStringLiteral("  \"%1\"").arg(tagFacts::shortened(text));
  }

  const FileReader &file;
  atomwalk::Source source;
  Terminal &terminal;
};

/// Null, or why the atoms cannot be told.
QString printAtoms(const QString &path, Terminal &terminal) {
  try {
    const auto file = std::make_shared<FileReader>(path);
    const AtomPtr root = Atom::atomContainerFromFile(file);
    terminal.print(QStringLiteral("    offset      bytes  atom"));
    AtomPrinter(*file, terminal).print(*root, 0, 0);
    return {};
  } catch (const std::exception &problem) {
    return QString::fromUtf8(problem.what());
  }
}

void printRange(const char *name, FileRange range, Terminal &terminal) {
  if (range.length == 0) return;
  terminal.print(
      QStringLiteral("%1: %2 at %3")
          .arg(QString::fromLatin1(name), rowText::counted(qsizetype(range.length), "byte", "bytes"))
          .arg(range.start));
}

QString printFrames(const QString &path, Terminal &terminal) {
  const auto tag = MP3InfoTag::tagWithMPEGFile(path);
  if (!tag) return QStringLiteral("no tag that can be read");
  if (tag->readVersion().isNull()) return QStringLiteral("it has no tag");
  terminal.print(QStringLiteral("Version: ") + tag->readVersion());
  printRange("Tag at the front", tag->id3v2Range(), terminal);
  printRange("Tag at the end", tag->id3v1Range(), terminal);
  for (const MP3InfoTag::Frame &frame : tag->frames()) {
    terminal.print(QStringLiteral("  ") + printable(QString::fromLatin1(frame.id)).leftJustified(8) +
                   tagFacts::kindName(frame.value).leftJustified(8) + tagFacts::inWords(frame.value));
  }
  return {};
}

bool holdsAtoms(const QString &path) {
  return tagFacts::kindOf(path, SongFile::songDataTypeAtPath(path)) == SongFile::kMP4Data ||
         FileReader(path).read(4, 4) == "ftyp";
}

}  // namespace

int TagsTreeCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options({}, {});
  QString error;
  if (!options.parse(arguments, 1, &error)) return wrongUse(error, terminal);
  if (options.operands().isEmpty()) return wrongUse(QStringLiteral("name a FILE"), terminal);
  const QString &path = options.operands().first();
  const Session session(Session::LogAtEnd::StaysText);
  QString why = tagFacts::whyUnreadable(path);
  if (why.isNull()) why = holdsAtoms(path) ? printAtoms(path, terminal) : printFrames(path, terminal);
  if (why.isNull()) return exitCode::kDone;
  return reported(QStringLiteral("Can't read \"%1\": %2").arg(printable(path), why), terminal);
}
