#include "tools/demo/Catalogue.h"

namespace catalogue {
namespace {

const char16_t *const kArtists[kArtistCount] = {
    u"The Velvet Lanterns",  u"Marrow & Pine",     u"Odalys Quint",           u"Halvard Grimsby Trio",
    u"The Paper Orchards",   u"Nightjar Assembly", u"Tessa Wrenfield",        u"Old Harbour Choir",
    u"Sable Machinery",      u"Lumen Drifters",    u"Cassius Vole",           u"The Tin Meridian",
    u"Juniper Hall Quartet", u"Mirelle Aubertin",  u"Brother Ostrich",        u"Ninth Tram Home",
    u"Perpetual Sundays",    u"Björnika Sólvang",  u"E\u0301te\u0301 Volage", u"Ångtåg Norrut",
    u"Полярный Трамвай",     u"星駅楽団"};
constexpr int kCyrillicArtist = 20, kJapaneseArtist = 21;

const char16_t *const kGenres[] = {u"Rock", u"Folk", u"Jazz", u"Electronic", u"Pop", u"Classical"};

const char16_t *const kFirstWords[] = {
    u"Amber",  u"Borrowed", u"Crooked", u"Distant",  u"Electric", u"Frozen",   u"Golden",    u"Hollow",
    u"Idle",   u"Jagged",   u"Kindly",  u"Lonesome", u"Midnight", u"Northern", u"Orchid",    u"Painted",
    u"Quiet",  u"Restless", u"Silver",  u"Tangled",  u"Unseen",   u"Vacant",   u"Wandering", u"Xeric",
    u"Yellow", u"Zealous",  u"Burning", u"Clever",   u"Dusty",    u"Early"};
const char16_t *const kSecondWords[] = {
    u"Harbour", u"Window", u"Ferry",   u"Meadow",  u"Engine",  u"Ladder", u"Compass", u"Garden",
    u"Signal",  u"Bridge", u"Winter",  u"Letter",  u"Station", u"Mirror", u"River",   u"Carousel",
    u"Pilot",   u"Shadow", u"Orchard", u"Lantern", u"Thunder", u"Paper",  u"Ocean",   u"Tower",
    u"Feather", u"Summer", u"Highway", u"Marble",  u"Balloon", u"Candle"};

const char16_t *const kCyrillicFirst[] = {u"Синий", u"Тихий", u"Дальний", u"Белый"};
const char16_t *const kCyrillicSecond[] = {u"Вокзал", u"Берег", u"Ветер", u"Город"};
const char16_t *const kJapaneseFirst[] = {u"青い", u"静かな", u"遠い", u"白い"};
const char16_t *const kJapaneseSecond[] = {u"空", u"駅", u"海", u"雨"};

// Titles with characters that are hard on addresses and file names, in the place of ordinary ones.
struct Special {
  int songIndex;
  const char16_t *title;
};
const Special kSpecials[] = {
    {1, u"Which Way? #2"},         {15, u"100% Rain"},    {29, u"Left/Right: A Walk"},
    {43, u"Salt + Pepper; Smoke"}, {57, u"???"},          {71, u"Nai\u0308ve Machine"},
    {85, u"<Open> \"Tag\""},       {99, u"50 ¢ & Change"}};

QString text(const char16_t *characters) {
  return QString::fromUtf16(characters);
}

}  // namespace

QString artist(int index) {
  return text(kArtists[index]);
}

QString album(int artistIndex, int albumIndex) {
  const int number = artistIndex * kAlbumsOfArtist + albumIndex;
  if (artistIndex == kCyrillicArtist) return text(kCyrillicFirst[albumIndex]) + QStringLiteral(" Альбом");
  if (artistIndex == kJapaneseArtist) return text(kJapaneseFirst[albumIndex]) + QStringLiteral("夜");
  return text(kSecondWords[(number * 11) % 30]) + QStringLiteral(" ") +
         text(number % 3 == 0 ? u"Sessions" : u"Stories");
}

QString genre(int artistIndex) {
  return text(kGenres[artistIndex % int(std::size(kGenres))]);
}

QString title(int songIndex) {
  for (const Special &special : kSpecials) {
    if (special.songIndex == songIndex) return text(special.title);
  }
  const int perArtist = kAlbumsOfArtist * kSongsOfAlbum;
  const int ofArtist = songIndex % perArtist;
  if (songIndex / perArtist == kCyrillicArtist) {
    return text(kCyrillicFirst[ofArtist / 4]) + QStringLiteral(" ") + text(kCyrillicSecond[ofArtist % 4]);
  }
  if (songIndex / perArtist == kJapaneseArtist) {
    return text(kJapaneseFirst[ofArtist / 4]) + text(kJapaneseSecond[ofArtist % 4]);
  }
  return text(kFirstWords[songIndex % 30]) + QStringLiteral(" ") +
         text(kSecondWords[(songIndex * 7 + songIndex / 30) % 30]);
}

Spellings spellings(int index) {
  struct Pair {
    int artist;
    const char16_t *first, *second;
  };
  static const Pair kPairs[] = {{1, u"Lanterns & Rain", u"Lanterns and Rain"},
                                {2, u"Hibernal (feat. Cassius Vole)", u"Hibernal [Featuring Cassius Vole]"},
                                {3, u"Night Crossing, Pt. 2", u"Night Crossing, Part Two"},
                                {5, u"Dockside Songs Vol. III", u"Dockside Songs, Volume 3"},
                                {6, u"Moth vs. Flame", u"Moth Versus Flame"},
                                {8, u"Rock 'n' Quarry", u"Rock n' Quarry"},
                                {13, u"Café Lumière", u"Cafe Lumiere"},
                                {15, u"THE LONG WAY ROUND", u"The Long Way Round"},
                                {16, u"Don’t Wake the Gardener", u"Dont Wake The Gardener"},
                                {17, u"Über den Gärten", u"U\u0308ber den Ga\u0308rten"},
                                {20, u"Снежный Поезд", u"Snežnyj Poezd"}};
  if (index == kSpellingCount - 1) {
    const QString name = QStringLiteral("Folded Twice");
    return {QStringLiteral("The Paper Orchards"), name, QStringLiteral("Paper Orchards, The"), name};
  }
  const Pair &pair = kPairs[index];
  return {artist(pair.artist), text(pair.first), artist(pair.artist), text(pair.second)};
}

Misspelling misspelling(int index) {
  static const struct {
    const char16_t *artist;
    int likeArtist;
    bool albumToo;
    bool isSameArtist = false;
  } kMisspellings[kMisspellingCount] = {
      {u"Velvet Lanterns", 0, false, true}, {u"Tessa Wrenfeild", 6, false},
      {u"Sabel Machinery", 8, false},       {u"Nightjar Asembly", 5, true},
      {u"Cassius Voal", 10, false},         {u"Ninth Tram home", 15, false, true},
      {u"Mirelle Obertin", 13, false},      {u"Bjornika Solvang", 17, true, true}};
  const auto &entry = kMisspellings[index];
  QString albumName = album(entry.likeArtist, 0);
  if (entry.albumToo) albumName.remove(2, 1);
  return {text(entry.artist), albumName, entry.isSameArtist};
}

NameVariant nameVariant(int index) {
  const QString loose = QStringLiteral("Loose Ends");
  QString wrongCapitals = album(9, 0), twoBlanks = album(7, 1);
  wrongCapitals.replace(QStringLiteral(" S"), QStringLiteral(" s"));
  twoBlanks.replace(u' ', QStringLiteral("  "));
  const NameVariant variants[kNameVariantCount] = {
      {artist(10).toUpper(), {}, album(10, 1), true, false},
      {artist(16), QStringLiteral("The ") + artist(16), album(16, 1), true, false},
      {QStringLiteral("Mgmt"), {}, loose, false, false},
      {QStringLiteral("mgmt"), {}, loose, true, false},
      {artist(9), {}, wrongCapitals, false, true},
      {artist(12), {}, QStringLiteral("The ") + album(12, 0), false, true},
      {artist(7), {}, twoBlanks, false, true},
      {QStringLiteral("Radiohead"), {}, QStringLiteral("Ok Computer"), false, false},
      {QStringLiteral("Radiohead"), {}, QStringLiteral("OK computer"), false, true}};
  return variants[index];
}

}  // namespace catalogue
