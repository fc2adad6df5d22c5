#include "platform/keeper/PeerUser.h"

#include <sys/socket.h>
#include <unistd.h>

bool isPeerThisUser(int socketHandle) {
#ifdef SO_PEERCRED
  struct ucred peer = {};
  socklen_t size = sizeof peer;
  return ::getsockopt(socketHandle, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
#else
  uid_t user = 0;
  gid_t group = 0;
  return ::getpeereid(socketHandle, &user, &group) == 0 && user == ::geteuid();
#endif
}
