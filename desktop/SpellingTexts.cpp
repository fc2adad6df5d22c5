#include "desktop/SpellingTexts.h"

#include "bridge/LocalizedMessage.h"

QString spellingLine(const SpellingChoice &choice) {
  if (choice.songs == 0) return localizedMessage(QStringLiteral("Spelling-NoSong"), choice.visibleName);
  if (choice.songs == 1) return localizedMessage(QStringLiteral("Spelling-OneSong"), choice.visibleName);
  return localizedMessage(QStringLiteral("Spelling-Songs"), choice.visibleName, choice.songs);
}
