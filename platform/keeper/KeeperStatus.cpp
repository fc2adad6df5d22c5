#include "platform/keeper/KeeperStatus.h"

#include "platform/keeper/KeeperConnection.h"

std::optional<keeperProtocol::Status> statusOfKeeper(const KeeperPlace &place,
                                                     std::chrono::milliseconds wait) {
  const auto connection = KeeperConnection::open(place, wait, nullptr);
  if (!connection) return std::nullopt;
  const auto answer = connection->ask(keeperProtocol::encodeRequest(keeperProtocol::StatusRequest{}), wait);
  return answer ? keeperProtocol::decodeStatus(*answer) : std::nullopt;
}
