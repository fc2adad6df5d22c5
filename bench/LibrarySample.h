#pragma once

#include <QByteArray>

/// A library XML as the music application writes it, of any number of tracks: about 28 keys and 1.5 KB for
/// each, artists and albums in runs, and a playlist of all tracks. The same bytes on every call.
QByteArray librarySample(int tracks);
