#include "bridge/TrackScripts.h"

#include <QtEndian>

#include "bridge/NamedScripts.h"
#include "bridge/Responsiveness.h"
#include "bridge/ScriptRunner.h"
#include "bridge/iTunesLibInterface.h"
#include "support/Hexadecimal.h"

namespace iTunesInterface {

namespace {

const QString kNoAnswer = QStringLiteral("error: no answer");

/// The text in the machine's own UTF-16 behind a byte-order mark: digits alone, which no script can trip
/// over.
QString hexadecimalOf(const QString &text) {
  const QString marked = QChar(QChar::ByteOrderMark) + text;
  return hexadecimalStringRepresentation(QByteArrayView(reinterpret_cast<const char *>(marked.utf16()),
                                                        marked.size() * qsizetype(sizeof(char16_t))));
}

QString fieldOfTrackByIndex(const QString &field, qint32 index, const QString &playlist) {
  return formatText(QStringLiteral("tell app \"iTunes\"\rreturn %@ of track %d of playlist \"%@\"\rend tell"),
                    {field, index, playlist});
}

}  // namespace

std::optional<QString> refreshAndGetPathOfSongWithPID(const QString &pid) {
  if (pid.isEmpty() || !isMusicAppRunning()) return std::nullopt;
  return stringFromScriptNameAndFormat(QStringLiteral("iTunes_Track_Refresh"), pid);
}

std::optional<QString> refreshAndGetPathOfSongWithIDInPlaylist(qint32 id, const QString &playlist) {
  if (id <= 0 || !isMusicAppRunning()) return std::nullopt;
  const QString place = playlist.isNull() ? QStringLiteral("1") : u'"' + playlist + u'"';
  return stringFromScriptNameAndFormat(QStringLiteral("iTunes_refresh_dbid"), place, id);
}

std::optional<QString> refreshAndGetPathOfSongWithTitleArtist(const QString &title, const QString &artist) {
  if (title.isEmpty() || artist.isEmpty() || !isMusicAppRunning()) return std::nullopt;
  return stringFromScriptNameAndFormat(QStringLiteral("iTunes_refresh_title_artist"), title, artist);
}

std::optional<QString> changeValueInTrackWithPIDOfTypeToValue(const QString &pid, const QString &type,
                                                              const QString &value) {
  return stringFromScriptNameAndFormat(QStringLiteral("iTunes_Track_Rename"), pid, hexadecimalOf(value), type,
                                       type, type, type);
}

std::optional<QString> mergePlayedFromTrackWithPIDToTrackWithPID(const QString &fromPID,
                                                                 const QString &toPID) {
  // Direct access is asked first, for a framework that could do it.
  if (iTunesLibInterface::mergePlayedFromTrackWithPIDToTrackWithPID(fromPID, toPID).isNull())
    return std::nullopt;
  const QString answer = stringFromScriptNameAndFormat(QStringLiteral("iTunes_Played_merge"), fromPID, toPID)
                             .value_or(kNoAnswer);
  return answer == u"merged" ? std::nullopt : std::optional(answer);
}

std::optional<PlayedCounts> playedCountsOfTracksWithPIDs(const QString &fromPID, const QString &toPID,
                                                         QString *problem) {
  const QString answer = stringFromScriptNameAndFormat(QStringLiteral("iTunes_Played_counts"), fromPID, toPID)
                             .value_or(kNoAnswer);
  *problem = answer;
  const QStringList numbers = answer.split(u',');
  if (numbers.size() != 4) return std::nullopt;
  qint64 counts[4];
  for (int i = 0; i < 4; ++i) {
    bool isNumber = false;
    counts[i] = numbers[i].toLongLong(&isNumber);
    if (!isNumber) return std::nullopt;
  }
  return PlayedCounts{counts[0], counts[1], counts[2], counts[3]};
}

std::optional<QString> settlePlayedOfTracksWithPIDs(const QString &fromPID, const QString &toPID,
                                                    const PlayedCounts &before, qint64 secondsAgo) {
  const QString answer = stringFromScriptNameAndFormat(
                             QStringLiteral("iTunes_Played_settle"), QString::number(before.fromPlays),
                             QString::number(before.toPlays), QString::number(before.fromSkips),
                             QString::number(before.toSkips), fromPID, toPID, QString::number(secondsAgo))
                             .value_or(kNoAnswer);
  return answer == u"settled" ? std::nullopt : std::optional(answer);
}

std::optional<QString> doCopyInfoFromTrackPIDToTrackPid(const QString &fromPID, const QString &toPID) {
  return stringFromScriptNameAndFormat(QStringLiteral("iTunes_Track_info_copy"), fromPID, toPID);
}

std::optional<QString> reunitePathWithPID(const QString &path, const QString &pid) {
  if (!isMusicAppRunning() || path.isEmpty() || pid.isEmpty()) return std::nullopt;
  return stringFromCompiledFunctionParams(QStringLiteral("reunitePathWithPID"), {path, pid});
}

std::optional<QString> addToiTunesSongAtPathToPlaylistNamed(const QString &path, const QString &playlist) {
  if (!isMusicAppRunning() || path.isEmpty()) return std::nullopt;
  return stringFromCompiledFunctionParams(QStringLiteral("addPathToiTunesPlaylist"), {path, playlist});
}

std::optional<QString> removeSongWithPID(const QString &pid) {
  return stringFromCompiledFunctionParams(QStringLiteral("removeTrackWithPID"), {pid});
}

std::optional<QString> removeSongWithPIDForCertain(const QString &pid) {
  const std::optional<ScriptDescriptor> answer =
      descFromCompiledFunctionParams(QStringLiteral("removeTrackWithPID"), {pid});
  return answer ? answer->stringValue() : kNoAnswer;
}

bool mayHaveBeenDone(const QString &failure) {
  return failure == kNoAnswer || failure.contains(u"timed out");
}

bool isNoSuchTrack(const QString &problem) {
  return problem.startsWith(u"error: no such track");
}

qint32 intValueOfFieldOfTrackIndexOfPlayList(const QString &field, qint32 index, const QString &playlist) {
  return intFromScript(fieldOfTrackByIndex(field, index, playlist));
}

std::optional<QString> valueOfFieldOfTrackIndexOfPlayList(const QString &field, qint32 index,
                                                          const QString &playlist) {
  return stringFromScript(fieldOfTrackByIndex(field, index, playlist));
}

std::optional<QString> valueOfFieldOfTrackNamed(const QString &field, const QString &name) {
  return stringFromScript(formatText(
      QStringLiteral("tell app \"iTunes\"\rreturn %@ of track \"%@\" of playlist \"Library\"\rend tell"),
      {field, name}));
}

}  // namespace iTunesInterface
