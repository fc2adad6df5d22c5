#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "values/Value.h"

/// The table "kinds" of the resources: which pieces of a "Kind" text tell which kind of file. Unchangeable
/// once made; any thread.
class FileKinds {
 public:
  struct Match {
    /// The table's key, a decimal text: the number of the kind.
    QString key;
    /// The piece that was found.
    QString piece;
  };

  /// Anything but texts and lists of texts is left out of the table; so are empty pieces.
  explicit FileKinds(const Dictionary &kinds);

  /// The first piece found in the text. Lists of pieces go first, in their letters' case; then single pieces
  /// whatever their case; each from the table's last key to its first, and in a list from the last piece.
  std::optional<Match> matchOf(const QString &kind) const;
  /// The number of the kind; -1 if no piece is found. Allocates nothing.
  qint32 numberOf(const QString &kind) const;

 private:
  struct Piece {
    Match match;
    qint32 number;
    /// The code units it holds, each as one of 64 bits: a text that lacks one cannot hold the piece.
    quint64 units;
  };
  void add(const Key &key, const Value &piece, std::vector<Piece> *pieces);
  const Piece *pieceIn(const QString &kind) const;

  /// Both in the order in which they are looked for.
  std::vector<Piece> listed;
  std::vector<Piece> single;
};
