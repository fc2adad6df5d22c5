#pragma once

#include "platform/keeper/KeeperProtocol.h"

namespace keeperProtocol {

/// The text of an outcome: never longer than a message can be. A result that cannot be sent (too long, too
/// deep, a real that is no number) becomes a failure that says so.
QByteArray encodeOutcome(const ScriptOutcome &outcome);
/// Nothing for what is no outcome.
std::optional<ScriptOutcome> decodeOutcome(const QByteArray &text);

}  // namespace keeperProtocol
