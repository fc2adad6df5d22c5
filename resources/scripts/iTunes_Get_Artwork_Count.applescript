-- How many pictures a track has: the one of a database ID, or else of a name and a path. -1 if there is none.
on findTrack(dbid, ti, p)
	tell application "iTunes"
		if dbid > 0 then
			set hits to (get every track of library playlist 1 whose database ID is dbid)
			if (count of hits) > 0 then return item 1 of hits
		end if
		set hits to (get every file track of library playlist 1 whose name is ti)
	end tell
	repeat with i from 1 to (count of hits)
		tell application "iTunes" to set loc to (get location of (item i of hits))
		if loc is not missing value then
			if (POSIX path of loc) is p then return item i of hits
		end if
	end repeat
	error "no such track" number -1728
end findTrack

try
	set trk to my findTrack(%d, "%@", "%@")
	tell application "iTunes" to set n to (count of artworks of trk)
	return "" & n
on error
	return "-1"
end try
