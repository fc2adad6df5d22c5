-- One line for each persistent ID, each ended by a return: how many pictures the track has, -1 for no track.
set pids to %@
set joined to ""
repeat with i from 1 to (count of pids)
	set pid to item i of pids
	set n to -1
	try
		tell application "iTunes"
			set n to (count of artworks of (first track of library playlist 1 whose persistent ID is pid))
		end tell
	end try
	set joined to joined & n & return
end repeat
return joined
