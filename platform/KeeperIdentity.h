#pragma once

#include <QString>

/// What Music Keeper is called, by people and by programs.
namespace keeperIdentity {

inline const QString kName = QStringLiteral("Music Keeper");
/// Its preference domain too.
inline const QString kIdentifier = QStringLiteral("com.brinmoor.keeper");

}  // namespace keeperIdentity
