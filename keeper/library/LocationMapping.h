#pragma once

#include <QString>
#include <QStringList>
#include <optional>

class LibraryStore;

/// A folder of another computer and the folder that has its files here.
struct LocationMapping {
  QString from;
  QString to;

  /// From the folders as a user writes them: `from` may have a drive letter and backslashes. Nothing unless
  /// both are whole paths.
  static std::optional<LocationMapping> of(const QString &from, const QString &to);
  /// The path with its front replaced; nothing if it does not lie in `from`.
  std::optional<QString> apply(const QString &path) const;
};

/// A mapping that was found, and what it would do.
struct MappingProposal {
  LocationMapping mapping;
  /// Files that are named, that are not where they are named, and how many of these the mapping finds.
  qsizetype named = 0;
  qsizetype missing = 0;
  qsizetype found = 0;
};

/// Where more than half of the tracks' files are missing: the mapping that finds most of them, by the same
/// artist, album and file name under one of the folders. Nothing if the files are there or cannot be found.
/// Looks at no more than 400,000 files. Throws `StoreError`; changes nothing.
std::optional<MappingProposal> proposeMapping(LibraryStore &store, const QStringList &folders);
/// The folders to look in for a library file: its own, and the media folder that the library names.
QStringList mappingFolders(LibraryStore &store, const QString &xmlPath);
