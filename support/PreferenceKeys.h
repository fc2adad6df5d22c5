#pragma once

#include <QString>

/// The names of the settings in the program's own preference domain. Absent ones read as false, 0 or nothing.
namespace prefs {

// What makes two tracks duplicates.
inline const QString noMatchArtist = QStringLiteral("noMatchArtist");
inline const QString noMatchTitle = QStringLiteral("noMatchTitle");
inline const QString noMatchDuration = QStringLiteral("noMatchDuration");
inline const QString matchAlbum = QStringLiteral("matchAlbum");
inline const QString matchFileKind = QStringLiteral("matchFileKind");
inline const QString matchFileSize = QStringLiteral("matchFileSize");
/// Seconds.
inline const QString allowedDurationVariation = QStringLiteral("allowedDurationVariation");
inline const QString noIgnoreLongTracks = QStringLiteral("noIgnoreLongTracks");
/// Minutes.
inline const QString ignoreDurationMinimum = QStringLiteral("ignoreDurationMinimum");

// How groups are marked.
inline const QString preferInfoTypes = QStringLiteral("preferInfoTypes");
inline const QString preferAudioData15 = QStringLiteral("preferAudioData15");
/// The older form of `preferAudioData15`, read only to carry it over.
inline const QString preferAudioData = QStringLiteral("preferAudioData");
/// Kilobits per second.
inline const QString preferAudioFileBitRate = QStringLiteral("preferAudioFileBitRate");
inline const QString preferAudioFileType = QStringLiteral("preferAudioFileType");
inline const QString preferAudioFileTypeNumber = QStringLiteral("preferAudioFileTypeNumber");

// Which names are the same.
inline const QString ignorePlurals = QStringLiteral("ignorePlurals");
/// 1 compares by sound.
inline const QString inconsistentMatchMethod = QStringLiteral("inconsistentMatchMethod");
inline const QString noWarnAboutPhoneticOrPlurals = QStringLiteral("noWarnAboutPhoneticOrPlurals");

// The library and its place.
inline const QString manualMediaPath = QStringLiteral("manualMediaPath");
inline const QString suppressUntrustedMediaFolderAlert = QStringLiteral("suppressUntrustedMediaFolderAlert");
inline const QString noScanAtStartup = QStringLiteral("noScanAtStartup");
inline const QString noWarnAboutLibSize = QStringLiteral("noWarnAboutLibSize");
inline const QString subpathsUsingOS = QStringLiteral("subpathsUsingOS");
inline const QString noSystemDeserialize = QStringLiteral("noSystemDeserialize");

// Repairs.
inline const QString noMergePlayedInfo = QStringLiteral("noMergePlayedInfo");
inline const QString noIntelligentPlaylistHandling = QStringLiteral("noIntelligentPlaylistHandling");
inline const QString noAdoptedPlaylist = QStringLiteral("noAdoptedPlaylist");
inline const QString noStopForTrashFailure = QStringLiteral("noStopForTrashFailure");
inline const QString reportMinorErrors = QStringLiteral("reportMinorErrors");
inline const QString noWarnBigPlaylists = QStringLiteral("noWarnBigPlaylists");
inline const QString noWarnAboutUnkeptTrash = QStringLiteral("noWarnAboutUnkeptTrash");
inline const QString unkeptActionPolicy = QStringLiteral("unkeptActionPolicy");
inline const QString unkeptPath = QStringLiteral("unkeptPath");

// The program itself.
inline const QString explainedDuplicates = QStringLiteral("explainedDuplicates");
/// 0 final versions, else test versions too.
inline const QString updateCheckLevel = QStringLiteral("updateCheckLevel");
inline const QString SUEnableAutomaticChecks = QStringLiteral("SUEnableAutomaticChecks");
inline const QString initialSetup = QStringLiteral("initialSetup");
inline const QString relatedDrawer = QStringLiteral("relatedDrawer");
inline const QString relatedHeight = QStringLiteral("relatedHeight");
inline const QString splitConfig = QStringLiteral("splitConfig");
inline const QString mainSplitConfig = QStringLiteral("mainSplitConfig");
inline const QString problemWinFrame = QStringLiteral("problemWinFrame");
inline const QString prefsWindowOrigin = QStringLiteral("prefsWindowOrigin");
inline const QString busy = QStringLiteral("busy");
inline const QString logDirectory = QStringLiteral("logDirectory");
inline const QString untrustedPIDs_3 = QStringLiteral("untrustedPIDs_3");

// Reserved names: nothing is read under them.
inline const QString matchFingerprint = QStringLiteral("matchFingerprint");
inline const QString fileScanEntireSystem = QStringLiteral("fileScanEntireSystem");
inline const QString sandboxBookmarks = QStringLiteral("_sandboxBookmarks");

}  // namespace prefs
