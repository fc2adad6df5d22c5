-- Adds a track to the playlist of a name, which is made if there is none. A track that is in it stays as it is.
on plainPlaylist(nm)
	tell application "iTunes"
		set hits to (get every user playlist whose (name is nm) and (smart is false))
		repeat with i from 1 to (count of hits)
			set pl to item i of hits
			considering case
				if ((special kind of pl) as text) is "none" and (name of pl) is nm then return pl
			end considering
		end repeat
		return (make new user playlist with properties {name:nm})
	end tell
end plainPlaylist

on addTrack(nm, pid)
	with timeout of 60 seconds
		tell application "iTunes"
			set trk to (first track of library playlist 1 whose persistent ID is pid)
			set pl to my plainPlaylist(nm)
			if not (exists (first track of pl whose persistent ID is pid)) then duplicate trk to pl
		end tell
	end timeout
end addTrack

try
	my addTrack("%@", "%@")
on error msg number n
	if n is -1712 then return "error: timed out: " & msg
	return "error: " & msg
end try
return
