#pragma once

/// Rests for so many seconds and does meanwhile what threads hand to the main thread, as one of them may be
/// what is waited for; no timers and no events, so that no command arrives. Main thread.
void restServingThreads(double seconds);
