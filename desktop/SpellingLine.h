#pragma once

#include <QFont>
#include <optional>
#include <vector>

#include "scanners/StyledText.h"

class QPainter;

/// A row's line of spellings laid out in one font and its bold face, cut with "…" where the width ends. What
/// is drawn and what is hit by a click come from the same pieces.
class SpellingLine {
 public:
  SpellingLine(const StyledText &line, const QFont &font, double width);

  /// Draws at the left end of `area`, centred from top to bottom. The run with `underlinedSource` as its song
  /// is underlined.
  void paint(QPainter &painter, const QRectF &area, std::optional<qint32> underlinedSource) const;
  /// The 16-bit unit of the line's plain text under a point `x` pixels from the left end; none beyond what
  /// is drawn.
  std::optional<qsizetype> unitAt(double x) const;
  /// True if the line had to be cut.
  bool isCut() const { return cut; }

 private:
  struct Piece {
    QString text;
    bool bold = false;
    std::optional<qint32> source;
    /// The place of the piece's first unit in the plain text.
    qsizetype firstUnit = 0;
    double x = 0;
    double width = 0;
  };

  const QFont plain;
  const QFont bold;
  std::vector<Piece> pieces;
  bool cut = false;
};
