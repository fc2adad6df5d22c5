-- Has the application write its first picture of a track into the file: 1 if it did.
-- with findTrack

try
	set trk to my findTrack(0, "%@", "%@")
	tell application "iTunes"
		set pic to (get data of artwork 1 of trk)
		set data of artwork 1 of trk to pic
	end tell
	return "1"
on error
	return "0"
end try
