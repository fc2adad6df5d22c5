#include "app/library/FileKinds.h"

namespace {

quint64 unitsOf(QStringView text) {
  quint64 units = 0;
  for (const QChar unit : text) units |= quint64(1) << (unit.unicode() & 63);
  return units;
}

}  // namespace

FileKinds::FileKinds(const Dictionary &kinds) {
  for (const DictionaryEntry *entry = kinds.end(); entry != kinds.begin();) {
    --entry;
    const Array &pieces = entry->value.toArray();
    for (qsizetype i = pieces.size() - 1; i >= 0; --i) add(entry->key, pieces.at(i), &listed);
    add(entry->key, entry->value, &single);
  }
}

void FileKinds::add(const Key &key, const Value &piece, std::vector<Piece> *pieces) {
  const QString &text = piece.toText();
  if (text.isEmpty()) return;
  pieces->push_back({{key.text(), text}, qint32(Value(key.text()).toInteger()), unitsOf(text)});
}

const FileKinds::Piece *FileKinds::pieceIn(const QString &kind) const {
  const quint64 units = unitsOf(kind);
  for (const Piece &piece : listed) {
    if ((piece.units & ~units) == 0 && kind.contains(piece.match.piece)) return &piece;
  }
  for (const Piece &piece : single) {
    if (kind.contains(piece.match.piece, Qt::CaseInsensitive)) return &piece;
  }
  return nullptr;
}

std::optional<FileKinds::Match> FileKinds::matchOf(const QString &kind) const {
  const Piece *piece = pieceIn(kind);
  return piece ? std::optional(piece->match) : std::nullopt;
}

qint32 FileKinds::numberOf(const QString &kind) const {
  const Piece *piece = pieceIn(kind);
  return piece ? piece->number : -1;
}
