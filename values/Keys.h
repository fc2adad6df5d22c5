#pragma once

#include "values/Key.h"

/// Every key that the system reads or writes by name, interned at start.
namespace keys {

// The library.
inline const Key Tracks{u"Tracks"};
inline const Key Playlists{u"Playlists"};
inline const Key MusicFolder{u"Music Folder"};
inline const Key MediaFolder{u"Media Folder"};
inline const Key LibraryPersistentID{u"Library Persistent ID"};
inline const Key MajorVersion{u"Major Version"};
inline const Key MinorVersion{u"Minor Version"};
inline const Key LibraryDate{u"Date"};
inline const Key ApplicationVersion{u"Application Version"};
inline const Key Features{u"Features"};
inline const Key ShowContentRatings{u"Show Content Ratings"};

// A track, as the library supplies it.
inline const Key TrackID{u"Track ID"};
inline const Key PersistentID{u"Persistent ID"};
inline const Key Name{u"Name"};
inline const Key Artist{u"Artist"};
inline const Key AlbumArtist{u"Album Artist"};
inline const Key Album{u"Album"};
inline const Key Composer{u"Composer"};
inline const Key Genre{u"Genre"};
inline const Key Kind{u"Kind"};
inline const Key Comments{u"Comments"};
inline const Key SortName{u"Sort Name"};
inline const Key SortArtist{u"Sort Artist"};
inline const Key SortAlbum{u"Sort Album"};
inline const Key SortAlbumArtist{u"Sort Album Artist"};
inline const Key SortComposer{u"Sort Composer"};
inline const Key ContentRating{u"Content Rating"};
inline const Key Size{u"Size"};
inline const Key TotalTime{u"Total Time"};
inline const Key TrackNumber{u"Track Number"};
inline const Key TrackCount{u"Track Count"};
inline const Key DiscNumber{u"Disc Number"};
inline const Key DiscCount{u"Disc Count"};
inline const Key Year{u"Year"};
inline const Key BitRate{u"Bit Rate"};
inline const Key SampleRate{u"Sample Rate"};
inline const Key PlayCount{u"Play Count"};
inline const Key PlayDate{u"Play Date"};
inline const Key PlayDateUTC{u"Play Date UTC"};
inline const Key Rating{u"Rating"};
inline const Key AlbumRating{u"Album Rating"};
inline const Key BPM{u"BPM"};
inline const Key ArtworkCount{u"Artwork Count"};
inline const Key DateAdded{u"Date Added"};
inline const Key DateModified{u"Date Modified"};
inline const Key ReleaseDate{u"Release Date"};
inline const Key SkipDate{u"Skip Date"};
inline const Key Compilation{u"Compilation"};
inline const Key HasVideo{u"Has Video"};
inline const Key TrackType{u"Track Type"};
inline const Key Location{u"Location"};
inline const Key Grouping{u"Grouping"};

// A track, as scripts read and change it.
inline const Key SkipCount{u"Skip Count"};
inline const Key RatingComputed{u"Rating Computed"};
inline const Key AlbumRatingComputed{u"Album Rating Computed"};
inline const Key Disabled{u"Disabled"};
inline const Key Loved{u"Loved"};
inline const Key Favorited{u"Favorited"};
inline const Key Disliked{u"Disliked"};
inline const Key AlbumLoved{u"Album Loved"};
inline const Key AlbumDisliked{u"Album Disliked"};
inline const Key StartTime{u"Start Time"};
inline const Key StopTime{u"Stop Time"};
inline const Key Bookmark{u"Bookmark"};
inline const Key VolumeAdjustment{u"Volume Adjustment"};
inline const Key Equalizer{u"Equalizer"};
inline const Key Description{u"Description"};
inline const Key LongDescription{u"Long Description"};
inline const Key Category{u"Category"};
inline const Key Series{u"Series"};
inline const Key SortSeries{u"Sort Series"};
inline const Key Season{u"Season"};
inline const Key Episode{u"Episode"};
inline const Key EpisodeOrder{u"Episode Order"};
inline const Key PartOfGaplessAlbum{u"Part Of Gapless Album"};
inline const Key SkipWhenShuffling{u"Skip When Shuffling"};
inline const Key RememberPosition{u"Remember Position"};
inline const Key Unplayed{u"Unplayed"};
inline const Key Work{u"Work"};
inline const Key MovementName{u"Movement Name"};
inline const Key MovementNumber{u"Movement Number"};
inline const Key MovementCount{u"Movement Count"};
inline const Key MusicVideo{u"Music Video"};
inline const Key Movie{u"Movie"};
inline const Key TVShow{u"TV Show"};
inline const Key Podcast{u"Podcast"};
inline const Key Audiobook{u"Audiobook"};
inline const Key ITunesU{u"iTunesU"};
inline const Key Shared{u"Shared"};
inline const Key PlaylistID{u"Playlist ID"};

// A track, as this system adds to it.
inline const Key Path{u"Path"};
inline const Key simplifiedArtist{u"simplifiedArtist"};
inline const Key simplifiedAlbum{u"simplifiedAlbum"};
inline const Key simplifiedName{u"simplifiedName"};
inline const Key DupeGroup{u"DupeGroup"};
inline const Key UIStripe{u"UIStripe"};
inline const Key markInfo{u"markInfo"};
inline const Key markAudio{u"markAudio"};
inline const Key RKIsArtistMatched{u"RKIsArtistMatched"};
inline const Key RKIsAlbumMatched{u"RKIsAlbumMatched"};
inline const Key metaphoneNoMinorWordsArtist{u"metaphoneNoMinorWordsArtist"};
inline const Key simplifiedAlbumArtist{u"simplifiedAlbum Artist"};
inline const Key metaphoneNoMinorWordsAlbumArtist{u"metaphoneNoMinorWordsAlbum Artist"};

// What the tables show of a row and no library holds: worked out on first display and kept in the row.
inline const Key calc_rating{u"calc_rating"};
inline const Key calc_humanTime{u"calc_humanTime"};
inline const Key calc_trackOfTotal{u"calc_trackOfTotal"};
inline const Key calc_type{u"calc_type"};
inline const Key calc_inconsistentName{u"calc_inconsistentName"};
/// The same without their prefix, as the pane of related tracks keeps them.
inline const Key humanTime{u"humanTime"};
inline const Key trackOfTotal{u"trackOfTotal"};
inline const Key type{u"type"};

// A row of names that are spelled in more than one way.
inline const Key inconType{u"inconType"};
inline const Key inconSongs{u"inconSongs"};
inline const Key inconPref{u"inconPref"};
inline const Key RKInconsistentSongSourceIndex{u"RKInconsistentSongSourceIndex"};
/// A run of the shown text of such a row.
inline const Key runText{u"text"};
inline const Key runIsBold{u"bold"};

// An audio file's facts, by the names that a metadata service gives them.
inline const Key kMDItemDurationSeconds{u"kMDItemDurationSeconds"};
inline const Key kMDItemAudioBitRate{u"kMDItemAudioBitRate"};
inline const Key kMDItemAudioSampleRate{u"kMDItemAudioSampleRate"};
/// The title that a file's tag had before it was changed.
inline const Key OriginalTitle{u"Title"};
// An archived tag.
inline const Key playlist{u"playlist"};
inline const Key playlistIndex{u"playlistIndex"};
inline const Key id3Modified{u"id3Modified"};
// The attributes of an MP4 file's tag.
inline const Key title{u"title"};
inline const Key artist{u"artist"};
inline const Key album{u"album"};
inline const Key year{u"year"};
inline const Key lyrics{u"lyrics"};
inline const Key track{u"track"};
inline const Key genre{u"genre"};
inline const Key bpm{u"bpm"};
inline const Key compilation{u"compilation"};

// A playlist.
inline const Key PlaylistPersistentID{u"Playlist Persistent ID"};
inline const Key PlaylistItems{u"Playlist Items"};
inline const Key Folder{u"Folder"};
inline const Key SmartInfo{u"Smart Info"};
inline const Key Master{u"Master"};
inline const Key TrackPersistentID{u"Track Persistent ID"};
inline const Key ParentPersistentID{u"Parent Persistent ID"};
inline const Key DistinguishedKind{u"Distinguished Kind"};
inline const Key Genius{u"Genius"};
inline const Key GeniusMix{u"GeniusMix"};
inline const Key Visible{u"Visible"};
inline const Key AllItems{u"All Items"};
inline const Key Podcasts{u"Podcasts"};
inline const Key PartyShuffle{u"Party Shuffle"};
inline const Key Music{u"Music"};
// What a refused playlist tells: its name, and the tracks that could not be carried over.
inline const Key playlists{u"playlists"};
inline const Key tracks{u"tracks"};
inline const Key tracksummaries{u"tracksummaries"};

// The resources dictionary.
inline const Key simplifiers{u"simplifiers"};
inline const Key ignoreKinds{u"ignoreKinds"};
inline const Key ignoreKindSubstrings{u"ignoreKindSubstrings"};
inline const Key kinds{u"kinds"};
inline const Key oddNameArtists{u"oddNameArtists"};
inline const Key oddNameAlbums{u"oddNameAlbums"};

// Why a script failed.
inline const Key scriptErrorNumber{u"NSAppleScriptErrorNumber"};
inline const Key scriptErrorMessage{u"NSAppleScriptErrorMessage"};
inline const Key scriptErrorRange{u"NSAppleScriptErrorRange"};

// A saved layout of a table's columns.
inline const Key columnKey{u"key"};
inline const Key columnWidth{u"width"};

// An archived picture.
inline const Key mimeFormat{u"mimeFormat"};
inline const Key pictureDescription{u"description"};
inline const Key textEncoding{u"textEncoding"};
inline const Key pictureType{u"pictureType"};
inline const Key pictureData{u"pictureData"};

// The state of a merge that a new process goes on with.
inline const Key mDuplicateSongDicts{u"mDuplicateSongDicts"};
inline const Key mInconsistentNameDicts{u"mInconsistentNameDicts"};
inline const Key mOrphanSongDicts{u"mOrphanSongDicts"};
inline const Key mMissingSongDicts{u"mMissingSongDicts"};
inline const Key problemTabIndex{u"problemTabIndex"};
inline const Key mNumberCompletedBeforeRestart{u"mNumberCompletedBeforeRestart"};
inline const Key mScriptLockedBeforeRestart{u"mScriptLockedBeforeRestart"};
inline const Key mNumberOfNoProgressRestarts{u"mNumberOfNoProgressRestarts"};

}  // namespace keys
