-- Removes all pictures of a track, the one of a database ID, or else of a name and a path: how many there were,
-- -1 if there is no such track or its pictures stay.
-- with findTrack

try
	set trk to my findTrack(%d, "%@", "%@")
	tell application "iTunes"
		set n to (count of artworks of trk)
		repeat with i from n to 1 by -1
			delete artwork i of trk
		end repeat
	end tell
	return "" & n
on error
	return "-1"
end try
