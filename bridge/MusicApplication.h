#pragma once

#include <QString>
#include <functional>

/// Which music application this system works with, and whether it can be spoken to. Any thread.
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

/// The application of a machine: on a Macintosh ("darwin") that of its system's version, elsewhere Music
/// Keeper. `displayName` is asked for the name that a user sees for the application at a path.
MusicApplication musicApplicationOf(const QString &kernel, int majorVersion, int minorVersion,
                                    const std::function<QString(const QString &)> &displayName);

/// The application of this machine; found out once.
const MusicApplication &musicApplication();
QString musicAppName();
QString musicAppIdentifier();
/// Always true: some music application comes with every system.
bool isMusicAppInstalled();

/// True if there is a way to speak to the music application at all.
bool haveBridge();

}  // namespace iTunesInterface
