#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// A source file with what it includes.
struct SourceFile {
  /// From the root of the tree.
  QString path;
  /// What stands between quotes, and what between angle brackets.
  QStringList quoted, angled;

  /// The file of this path and text.
  static SourceFile read(const QString &path, const QString &text);
};

/// All C++ files of a tree, sorted by path; build folders and hidden folders are left out.
std::vector<SourceFile> readSourceTree(const QString &root);
