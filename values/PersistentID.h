#pragma once

#include <QString>
#include <optional>

/// A persistent ID, the identity of a track or a playlist for ever, as 16 capital hexadecimal digits.
QString hexPersistentID(quint64 persistentID);
/// The persistent ID of 1 to 16 hexadecimal digits in either case; nothing for any other text.
std::optional<quint64> persistentIDOfText(QStringView text);
/// True for 16 hexadecimal digits in either case, and thus for what may stand in a script.
bool isPersistentID(QStringView text);
