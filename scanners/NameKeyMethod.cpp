#include "scanners/NameKeyMethod.h"

#include "support/Preferences.h"
#include "text/Metaphone.h"
#include "text/Simplified.h"
#include "values/Keys.h"

NameKeyMethod NameKeyMethod::simplifying() {
  return {simplified, keys::simplifiedArtist, keys::simplifiedAlbumArtist};
}

NameKeyMethod NameKeyMethod::phonetic() {
  return {metaphoneNoMinorWords, keys::metaphoneNoMinorWordsArtist, keys::metaphoneNoMinorWordsAlbumArtist};
}

NameKeyMethod NameKeyMethod::fromPreferences() {
  return prefs::integer(prefs::inconsistentMatchMethod) == 1 ? phonetic() : simplifying();
}
