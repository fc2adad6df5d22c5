#pragma once

#include <QString>
#include <optional>

/// All conversation with the music application. Further operations of this name stand in app/library/, with
/// the library's file and its place. Any thread.
namespace iTunesInterface {

/// What tells one music application from another.
struct MusicApplication {
  QString name;
  QString identifier;
  QString preferenceDomain;
  /// The key of the domain that names the library's place.
  QString libraryKey;
  /// The newer of the two applications: its library lies in "Music/Music".
  bool isNewSystem = false;
};

/// The application that this system works with.
const MusicApplication &musicApplication();
QString musicAppName();
QString musicAppIdentifier();

/// True if there is a way to speak to the music application at all.
bool haveBridge();
/// Without a bridge it counts as running: nothing waits for what cannot be asked.
bool isMusicAppRunning();
bool isMusicAppInstalled();
/// The application's version; nothing if it does not answer or there is no bridge.
std::optional<QString> versionString();
/// The version's first number, kept once it is above 0; 0 while it is unknown.
int iTunesMajorVersion();

/// Asks the application to write its library file. Without a bridge nothing happens.
void writeLibraryNow();
/// Notes that the program has changed the library.
void dirtyLibrary();
/// True if the library can be read without its file.
bool haveDirectLibraryAccess();
/// The media folder by direct access; empty if there is none.
QString musicLibraryMediaPath();
/// The folder that holds most of the tracks' files, by direct access; empty if there is none.
QString musicLibraryMostCommonParentMediaPath();

/// The file of the track that is playing; null if none plays or nobody answers.
QString pathOfCurrentlyPlayingTrack();
void pausePlaying();
void resumePlaying();
/// Has the application look at a track's file again: the path that it has now, a text that begins with "error",
/// or nothing if nobody answers.
std::optional<QString> refreshAndGetPathOfSongWithPID(const QString &pid);

}  // namespace iTunesInterface
