#include "platform/keeper/LocalSocket.h"

#include <fcntl.h>
#include <sys/socket.h>

#include <QFile>
#include <cstring>

namespace localSocket {

int make() {
  const int handle = ::socket(AF_UNIX, SOCK_STREAM, 0);
  if (handle < 0) return -1;
  ::fcntl(handle, F_SETFD, FD_CLOEXEC);
  ::fcntl(handle, F_SETFL, O_NONBLOCK);
  return handle;
}

std::optional<sockaddr_un> addressOf(const QString &path) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  const QByteArray name = QFile::encodeName(path);
  if (size_t(name.size()) >= sizeof address.sun_path) return std::nullopt;
  std::memcpy(address.sun_path, name.constData(), size_t(name.size()));
  return address;
}

}  // namespace localSocket
