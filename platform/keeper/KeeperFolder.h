#pragma once

#include <QString>

/// Where the keeper's library is. Any thread.
namespace keeperFolder {

/// The folder of the keeper's store: the one that it served last, if a store stands there, else "iTunes" in
/// the user's music folder.
QString ofUser();
/// Notes the folder that the keeper serves from now on, for itself and for those who look for the library.
void note(const QString &folder);

}  // namespace keeperFolder
