#pragma once

#include "values/Keys.h"

/// Keys of a library file that Tallyfen itself never reads.
namespace demoKeys {

inline const Key MajorVersion{u"Major Version"};
inline const Key MinorVersion{u"Minor Version"};
inline const Key LibraryDate{u"Date"};
inline const Key ApplicationVersion{u"Application Version"};
inline const Key Features{u"Features"};
inline const Key ShowContentRatings{u"Show Content Ratings"};
inline const Key SkipCount{u"Skip Count"};
inline const Key AlbumRatingComputed{u"Album Rating Computed"};
inline const Key FileFolderCount{u"File Folder Count"};
inline const Key LibraryFolderCount{u"Library Folder Count"};
inline const Key Podcast{u"Podcast"};
inline const Key PlaylistID{u"Playlist ID"};
inline const Key SmartCriteria{u"Smart Criteria"};
inline const Key ParentPersistentID{u"Parent Persistent ID"};
inline const Key DistinguishedKind{u"Distinguished Kind"};
inline const Key Music{u"Music"};
inline const Key Movies{u"Movies"};
inline const Key Podcasts{u"Podcasts"};
inline const Key AllItems{u"All Items"};
inline const Key Visible{u"Visible"};

}  // namespace demoKeys
