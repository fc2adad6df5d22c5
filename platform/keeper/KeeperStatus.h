#pragma once

#include <chrono>
#include <optional>

#include "platform/keeper/KeeperPlace.h"
#include "platform/keeper/KeeperProtocol.h"

/// What the keeper at a place says of itself; nothing if none answers within `wait`. Any thread.
std::optional<keeperProtocol::Status> statusOfKeeper(const KeeperPlace &place,
                                                     std::chrono::milliseconds wait);
