-- Has the application write its first picture of a track into the file: 1 if it did.
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
	set trk to my findTrack(0, "%@", "%@")
	tell application "iTunes"
		set pic to (get data of artwork 1 of trk)
		set data of artwork 1 of trk to pic
	end tell
	return "1"
on error
	return "0"
end try
