#pragma once

#include <QString>
#include <optional>

/// What is asked of the music application as a whole. Any thread.
namespace iTunesInterface {

/// The application's version; nothing if it does not answer. The question starts the application. Waits as
/// long as the answer takes.
std::optional<QString> versionString();

/// The version's first number, kept once it is above 0. While the application does not run nothing is asked,
/// and the answer is -1 if none was ever known.
int iTunesMajorVersion();

/// Asks the application to write its library and has the direct access look at it again. Waits up to 4
/// seconds; without a bridge nothing happens.
void writeLibraryNow();

/// Has the application quit, if it runs. Does not wait for its end, and no longer than so many seconds for
/// its answer: neither one that hangs nor a script that it hangs on holds the caller up.
void quitMusicAppWithin(float seconds);

}  // namespace iTunesInterface
