#pragma once

#include <sys/un.h>

#include <QString>
#include <optional>

/// What both ends of the keeper's socket need of the system.
namespace localSocket {

/// A socket that is closed in programs started from here and never blocks; -1 with the reason in errno.
int make();
/// The address of a path; nothing if the path is too long for one.
std::optional<sockaddr_un> addressOf(const QString &path);

}  // namespace localSocket
