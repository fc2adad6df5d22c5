#pragma once

#include <QString>

/// Which paths lead to one file. Links are followed. Any thread.
namespace fileIdentity {

/// True if there is a file at the path, or at the end of its links: no folder, no device.
bool isFile(const QString &path);
/// True if both paths lead to the same file: by their texts, or by device and inode, as through links.
bool areSameFile(const QString &path, const QString &other);
/// The bytes of the file at a path; 0 if there is none.
qint64 sizeOfFile(const QString &path);

}  // namespace fileIdentity
