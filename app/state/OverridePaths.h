#pragma once

#include <QHash>
#include <QString>

struct AppState;

/// From a path as the library file lists it to the path where the track really is. What a load began with
/// stays in force for that load. Main thread.
QHash<QString, QString> &equivOverridePathsDict(AppState &state);

/// The end of the process: the paths are known for its life only, so nothing is stored. Called beside the
/// writers of what is.
void writeEquivOverridePathsDict(const AppState &state);
