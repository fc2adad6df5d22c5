#pragma once

#include <QStringView>

/// What the user decides about the library's files. All but the export are off until asked for.
struct KeeperSettings {
  /// A change of a track's artist, album artist, album, name or numbers moves its file within the media
  /// folder.
  bool organise = false;
  /// Files that are added are copied into the media folder first.
  bool copyToMediaFolder = false;
  /// The library is kept as XML beside the store too.
  bool exportXML = true;

  /// The user's settings from the preferences; what is not set is as it comes. Any thread.
  static KeeperSettings read();
};

/// A setting and its key in the keeper's preference domain.
struct KeeperSetting {
  QStringView key;
  bool KeeperSettings::*value;
};

inline constexpr KeeperSetting kKeeperSettings[] = {
    {u"organise", &KeeperSettings::organise},
    {u"copyToMediaFolder", &KeeperSettings::copyToMediaFolder},
    {u"exportXML", &KeeperSettings::exportXML}};
