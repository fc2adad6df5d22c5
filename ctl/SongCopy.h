#pragma once

#include <QString>

/// The file that a command changes: one that the user named, or a new copy of it. A copy that was not kept is
/// removed, so that no half-made file is left. One thread.
class SongCopy {
 public:
  SongCopy() = default;
  SongCopy(const SongCopy &) = delete;
  ~SongCopy();

  /// Makes the whole copy, which its owner may write. What is there already is never touched: a line for the
  /// user then, and on any other failure, else null.
  [[nodiscard]] QString make(const QString &from, const QString &to);
  void keep() { copy.clear(); }

 private:
  QString copy;
};
