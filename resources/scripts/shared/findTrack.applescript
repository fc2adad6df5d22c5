-- The track of a database ID above 0, or else of a name and a path; error -1728 if there is none.
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
