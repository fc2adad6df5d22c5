#pragma once

#include <QTextEdit>

/// A text of a sheet: of one width, letter for letter, broken anywhere where a word is longer than a line
/// (names of files may be), and as high as it is until it is told to be scrolled.
class SheetText : public QTextEdit {
 public:
  explicit SheetText(int textWidth);

  void setWholeText(const QString &text);
  /// The height that the whole text takes.
  int wholeHeight() const { return whole; }
  /// Shows no more than so many pixels of it; the rest is scrolled to.
  void setShownHeight(int height);

 private:
  const int width;
  int whole = 0;
};
