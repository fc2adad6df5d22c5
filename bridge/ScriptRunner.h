#pragma once

#include <QString>
#include <optional>

#include "platform/ScriptHost.h"

/// Script texts on their way to the music application. All texts are written against "iTunes"; the runner
/// puts the application's own name into them. Any thread. Where there is no bridge nothing runs and nothing
/// comes back.
namespace iTunesInterface {

/// Runs a script and answers its result; nothing if it failed, and then `lastScriptErrorNumber` says why.
/// A timeout of 0 or less waits for ever, one script at a time. With a timeout nothing comes back when it has
/// passed, or when a cancel was requested: the script then runs on in the background and nobody reads its
/// result.
std::optional<ScriptDescriptor> descFromScriptTimeoutSeconds(const QString &source, float timeout);

/// The text of an untimed run's result; nothing if there is none.
std::optional<QString> stringFromScript(const QString &source);

/// The number of an untimed run's result; -1 if there is no result.
qint32 intFromScript(const QString &source);

/// Ends the wait of the timed script in flight, or of the next one: the request stays until a run has ended.
/// An untimed script is never interrupted.
void cancelCurrentScriptExecution();

/// True while a script without a time limit runs, so that the next one would have to wait. Never waits itself.
bool isLocked();

/// Why the run that ended last failed, in the script language's numbers; -1753 where none was told and for a
/// timeout, 0 for a success.
qint64 lastScriptErrorNumber();

}  // namespace iTunesInterface
