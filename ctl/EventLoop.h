#pragma once

#include <functional>

/// Runs the event loop until `done` holds, asked after each event; `onInterrupt` is called for each
/// interruption by the user.
using LoopRunner =
    std::function<void(const std::function<bool()> &done, const std::function<void()> &onInterrupt)>;

/// The runner on Qt's event loop. The first Ctrl-C is an interruption, a second ends the process. Main
/// thread, behind the application object.
void runEventLoop(const std::function<bool()> &done, const std::function<void()> &onInterrupt);
