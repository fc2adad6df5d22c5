#pragma once

/// Whether the music application runs, and whether it answers. Any thread.
namespace iTunesInterface {

/// Asks the application for its version and waits up to 8 seconds for the answer. False at once while an
/// earlier question is still open. Starts an application that does not run, and takes that for an answer.
bool isiTunesResponsive();

/// True if the application runs. The answer is kept until `resetIsMusicAppRunning`. Without a bridge it
/// counts as running: nothing waits for what cannot be asked.
bool isMusicAppRunning();

/// To be called when some application was launched or has ended.
void resetIsMusicAppRunning();

/// Forgets whether the application runs and how it answered; a question that is still open no longer counts.
void reset();

}  // namespace iTunesInterface
