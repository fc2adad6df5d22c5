-- Plays the track at a place of a playlist, if it is the track that is meant: 1 if it plays.
set plName to "%@"
set ti to "%@"
set ar to "%@"
set place to %d
try
	tell application "iTunes"
		set wasFixed to fixed indexing
		set fixed indexing to true
		try
			set trk to (get track place of playlist plName)
			set fixed indexing to wasFixed
		on error msg number n
			set fixed indexing to wasFixed
			error msg number n
		end try
		if ((name of trk) is ti) and ((artist of trk) is ar) then
			play trk
			return "1"
		end if
	end tell
end try
return "0"
