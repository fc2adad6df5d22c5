#pragma once

#include <QtGlobal>

/// The default settings, a log in a folder of its own, and nothing else of the
/// machine. For measurements.
void startBenchPlatform();

/// The most memory that the process has held so far.
qint64 peakKilobytes();
