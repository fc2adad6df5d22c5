#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <thread>

#include "tests/keeper/server/ServiceFixture.h"

namespace {

class OtherUser : public ServiceFixture {};

/// Makes the thread that calls it another user's, who may still open what its own user may: so nothing but
/// the look at the other end can refuse it. False if it may not.
bool becomeAnotherUser() {
  const uid_t own = ::geteuid();
  return ::syscall(SYS_setresuid, -1, own + 1, -1) == 0 && ::syscall(SYS_setfsuid, own) >= 0;
}

}  // namespace

TEST_F(OtherUser, IsRefusedEvenIfItsConnectionCameThrough) {
  bool isAnother = false;
  QByteArray told;
  std::thread other([&] {
    isAnother = becomeAnotherUser();
    const int handle = rawConnection();
    const QByteArray message =
        keeperProtocol::framed(encodeRequest(keeperProtocol::ScriptRequest{QStringLiteral("a")}));
    (void)!::send(handle, message.constData(), size_t(message.size()), MSG_NOSIGNAL);
    ::shutdown(handle, SHUT_WR);
    told = readAll(handle);
  });
  other.join();
  // A test that does not run as the system's own user cannot become another; then it is let in.
  EXPECT_EQ(told.isEmpty(), isAnother);
  EXPECT_EQ(engine.ran, isAnother ? 0 : 1);
  EXPECT_EQ(logContains(QStringLiteral("connection of another user is refused")), isAnother);
  EXPECT_EQ(ask(*connect(), QStringLiteral("on")), QStringLiteral("on"));
}
