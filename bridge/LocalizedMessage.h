#pragma once

#include <QString>

#include "support/Format.h"
#include "support/StringTable.h"

/// The user-visible text of a key, with every "[MUSICAPPNAME]" replaced by the music application's name; the
/// key itself if the table has no such text. Any thread.
QString localizedMessage(const QString &key);

/// The same, with the text's "%d", "%@" and the like filled in.
template <class... Arguments>
QString localizedMessage(const QString &key, const Arguments &...arguments) {
  return formatText(localizedMessage(key), {FormatArgument(arguments)...});
}
