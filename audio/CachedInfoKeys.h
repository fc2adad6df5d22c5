#pragma once

#include "values/Key.h"

/// The keys of a file's entry in the info cache. Cache files are private to this system.
namespace cachedinfo {

/// The file's modification date when the entry was made.
inline const Key modified{u"mod"};
inline const Key title{u"tit"};
inline const Key artist{u"perf"};
inline const Key album{u"alb"};
inline const Key track{u"trk"};
inline const Key year{u"yr"};
inline const Key genres{u"gnr"};
inline const Key bpm{u"bpm"};
inline const Key lyrics{u"lyr"};
/// The audio's facts, as a dictionary.
inline const Key metadata{u"dat"};
inline const Key numberOfImages{u"nart"};
/// The bytes of all pictures; always there.
inline const Key artworkBytes{u"sart"};
inline const Key compilation{u"comp"};
/// A small PNG of the first picture, and the name under which an older form kept a picture.
inline const Key icon{u"icon"};
inline const Key tiff{u"tiff"};

}  // namespace cachedinfo
