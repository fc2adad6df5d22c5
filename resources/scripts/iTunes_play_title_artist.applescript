-- Plays the first track of a name and an artist: 1 if it plays.
try
	tell application "iTunes"
		set hits to (get every track of library playlist 1 whose (name is "%@") and (artist is "%@"))
		if (count of hits) > 0 then
			play (item 1 of hits)
			return "1"
		end if
	end tell
end try
return "0"
