-- How many pictures a track has: the one of a database ID, or else of a name and a path. -1 if there is none.
-- with findTrack

try
	set trk to my findTrack(%d, "%@", "%@")
	tell application "iTunes" to set n to (count of artworks of trk)
	return "" & n
on error
	return "-1"
end try
