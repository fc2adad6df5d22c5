#pragma once

#include <QString>
#include <optional>

/// Which paths lead to one file. Links are followed. Any thread.
namespace fileIdentity {

/// True if there is a file at the path, or at the end of its links: no folder, no device.
bool isFile(const QString &path);
/// Which file it is, and its bytes.
struct Status {
  quint64 device = 0, number = 0;
  qint64 size = 0;
};
/// Nothing if `isFile` does not hold. One look at the disk.
std::optional<Status> statusOfFile(const QString &path);
/// True if both paths lead to the same file: by their texts, or by device and inode, as through links.
bool areSameFile(const QString &path, const QString &other);
/// The bytes of the file at a path; 0 if there is none.
inline qint64 sizeOfFile(const QString &path) {
  return statusOfFile(path).value_or(Status()).size;
}

}  // namespace fileIdentity
