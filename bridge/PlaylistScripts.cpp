#include "bridge/PlaylistScripts.h"

#include "bridge/NamedScripts.h"
#include "support/BMLog.h"
#include "values/Keys.h"

namespace iTunesInterface {

namespace {

const QString &fieldMark() {
  static const QString mark = QStringLiteral("|@");
  return mark;
}

QStringList parameters(const IgnoredPlaylists &ignored) {
  return {ignored.unkept, ignored.adopted, ignored.temporaryPrefix, ignored.converting};
}

Dictionary playlistOfLine(const QStringList &fields) {
  Dictionary playlist = Dictionary::make();
  playlist.set(keys::Name, fields[0]);
  playlist.set(keys::PlaylistPersistentID, fields[1]);
  playlist.set(keys::DistinguishedKind, fields[2]);
  if (fields[3] == u"true") playlist.set(keys::SmartInfo, fields[3]);
  playlist.set(keys::ParentPersistentID, fields[4]);
  return playlist;
}

}  // namespace

std::optional<QString> addTrackWithPIDToPlaylistNamedCreate(const QString &pid, const QString &playlist,
                                                            bool create) {
  if (!create) BMLog("addTrackWithPID:... without doCreate unsupported on OS X");
  return stringFromScriptNameAndFormat(QStringLiteral("iTunes_Track_Unkept"), playlist, pid);
}

std::optional<QString> addTrackWithPIDToPlaylistWithPID(const QString &pid, const QString &playlistPID) {
  return stringFromCompiledFunctionParams(QStringLiteral("addTrackPIDToiTunesPlaylistPID"),
                                          {pid, playlistPID});
}

void removePlaylistsWithNamesStartingWith(const QString &prefix) {
  stringFromCompiledFunctionParams(QStringLiteral("incrementalPlaylistDelete"), {prefix});
}

std::optional<QString> incrementalRebuildPlaylist(const QString &playlistPID, const QStringList &oldPIDs,
                                                  const QString &newPID, const QString &temporaryName) {
  return stringFromCompiledFunctionParams(QStringLiteral("incrementalRebuildPlaylist"),
                                          {playlistPID, oldPIDs.join(u','), newPID, temporaryName});
}

std::optional<QString> rebuildPlaylistUsingTempNameOldTrackPIDsNewTrackPID(const QString &, const QString &,
                                                                           const QStringList &,
                                                                           const QString &) {
  return std::nullopt;
}

std::optional<QString> getMaxPlaylistLength(const IgnoredPlaylists &ignored) {
  return stringFromCompiledFunctionParams(QStringLiteral("getMaxPlaylistLength"), parameters(ignored));
}

QHash<QString, QString> playlistNamesAtLength(qint64 length, const IgnoredPlaylists &ignored) {
  const std::optional<QString> answer =
      stringFromCompiledFunctionParams(QStringLiteral("getPlaylistNamesAndPIDsAboveLength"),
                                       QStringList{QString::number(length)} + parameters(ignored));
  const QStringList halves = answer.value_or(QString()).split(QStringLiteral("@|"));
  QHash<QString, QString> found;
  if (halves.size() != 2) return found;
  const QStringList names = halves[0].split(fieldMark()), pids = halves[1].split(fieldMark());
  for (qsizetype i = 0; i < std::min(names.size(), pids.size()); ++i) {
    const QString name = names[i].trimmed();
    if (!name.isEmpty() && !pids[i].isEmpty()) found.insert(pids[i], name);
  }
  return found;
}

Array playlistsInfo() {
  const std::optional<QString> answer = stringFromScriptNameAndFormat(QStringLiteral("iTunes_Playlist_Info"));
  if (!answer) return {};
  Array playlists = Array::make();
  for (const QString &line : answer->split(u'\r')) {
    const QStringList fields = line.split(fieldMark());
    if (fields.size() >= 5) playlists.append(playlistOfLine(fields));
  }
  return playlists;
}

Value playlistTypeForKind(const Value &kind) {
  static const QHash<QString, QString> names = {{QStringLiteral("2"), QStringLiteral("Movies")},
                                                {QStringLiteral("3"), QStringLiteral("TV Shows")},
                                                {QStringLiteral("4"), QStringLiteral("Music")},
                                                {QStringLiteral("5"), QStringLiteral("Books")},
                                                {QStringLiteral("10"), QStringLiteral("Podcasts")},
                                                {QStringLiteral("19"), QStringLiteral("Purchased")},
                                                {QStringLiteral("22"), QStringLiteral("Party Shuffle")},
                                                {QStringLiteral("26"), QStringLiteral("Genius")},
                                                {QStringLiteral("31"), QStringLiteral("iTunes U")}};
  const bool isNumber = kind.type() == Value::Type::Integer;
  const auto found = names.find(isNumber ? QString::number(kind.toInteger()) : kind.toText());
  return found != names.end() ? Value(*found) : kind;
}

}  // namespace iTunesInterface
