#pragma once

#include <QString>

/// The made-up artists, albums and songs. None of them exists.
namespace catalogue {

inline constexpr int kArtistCount = 22;
inline constexpr int kAlbumsOfArtist = 2;
inline constexpr int kSongsOfAlbum = 7;
inline constexpr int kSongCount = kArtistCount * kAlbumsOfArtist * kSongsOfAlbum;

QString artist(int index);
QString album(int artistIndex, int albumIndex);
QString genre(int artistIndex);
/// The title of a song: from 0 on the artists' own, from kSongCount to 899 spare ones; no two are alike.
QString title(int songIndex);

/// Two spellings of one song, which count as the same under the settings that the application comes with.
struct Spellings {
  QString firstArtist, firstName, secondArtist, secondName;
};
inline constexpr int kSpellingCount = 12;
Spellings spellings(int index);

/// Artists and albums in a spelling that is near another one of the catalogue.
struct Misspelling {
  QString artist, album;
  /// The artist counts as the same under the settings that the application comes with.
  bool isSameArtist = false;
};
inline constexpr int kMisspellingCount = 8;
Misspelling misspelling(int index);

/// Artists and albums in another spelling, which counts as the same under the settings that the application
/// comes with. Two of the artists exist: their names defy the rules for capitals, which the application
/// knows.
struct NameVariant {
  QString artist, albumArtist, album;
  /// This song makes its artist or its album one that is spelled in several ways.
  bool makesArtist = false, makesAlbum = false;
};
inline constexpr int kNameVariantCount = 9;
NameVariant nameVariant(int index);

}  // namespace catalogue
