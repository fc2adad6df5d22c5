#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace BMUtility {

/// The files and folders below a folder, paths relative to it without a slash at the front, each folder's
/// contents directly behind the folder itself, in the order of the folders' listings. Links are neither
/// listed nor followed; a package that is not to be entered is one item. With a `maxCount` other than 0 at
/// most so many. Nothing for a folder that is empty or cannot be read. Any thread; never throws.
std::optional<QStringList> recursiveFilePathsInDirectoryEnterPackagesMaxCount(const QString &folder,
                                                                              bool enterPackages,
                                                                              quint32 maxCount);

/// The walk's step: the same for a folder below a base to which the paths are relative. The count is looked
/// at only behind a folder's contents, each level for itself, so that more may come back.
std::optional<QStringList> recursiveFilePathsInDirectoryBasePathEnterPackagesMaxCount(const QString &folder,
                                                                                      const QString &base,
                                                                                      bool enterPackages,
                                                                                      quint32 maxCount);

}  // namespace BMUtility
