#include "bridge/ArtworkScripts.h"

#include "bridge/NamedScripts.h"

namespace iTunesInterface {

std::optional<QStringList> artworkCountsForPIDs(const QStringList &pids) {
  QStringList quoted;
  for (const QString &pid : pids) quoted += u'"' + pid + u'"';
  const std::optional<QString> answer = stringFromScriptNameAndFormat(
      QStringLiteral("iTunes_Get_Artwork_Counts"), QString(u'{' + quoted.join(QStringLiteral(", ")) + u'}'));
  if (!answer) return std::nullopt;
  const QStringList lines = answer->split(u'\r');
  if (lines.size() - 1 != pids.size()) return std::nullopt;
  return lines.first(pids.size());
}

QString artworkCountForDBIDTitlePath(qint32 id, const QString &title, const QString &path) {
  return stringFromScriptNameAndFormat(QStringLiteral("iTunes_Get_Artwork_Count"), id, title, path)
      .value_or(QStringLiteral("-1"));
}

std::optional<QString> removeAllArtworkFromSongWithDBIDTitlePath(qint32 id, const QString &title,
                                                                 const QString &path) {
  return stringFromScriptNameAndFormat(QStringLiteral("iTunes_Remove_Artwork"), id, title, path);
}

bool embedArtworkForTitlePath(const QString &title, const QString &path) {
  const std::optional<QString> done =
      stringFromScriptNameAndFormat(QStringLiteral("iTunes_Embed_Artwork"), title, path);
  return done && done->toInt() > 0;
}

}  // namespace iTunesInterface
