-- Jobs in a music application, in the words of its dictionary.
on libTrack(pid)
	tell application "Music"
		return (first track of library playlist 1 whose persistent ID is pid) -- raises -1728 when absent
	end tell
end libTrack
on plainPlaylist(nm, mayMake)
	tell application "Music"
		set hits to (every user playlist whose (name is nm) and (smart is false) and (special kind is none))
		repeat with i from 1 to (count of hits)
			set plName to name of (item i of hits)
			considering case
				if plName is nm then return item i of hits
			end considering
		end repeat
		if mayMake then return (make new user playlist with properties {name:nm})
	end tell
	error "no playlist " & nm number -1728
end plainPlaylist
on hexUnit(four)
	set n to 0
	repeat with k from 1 to 4
		set n to n * 16 + (offset of (character k of four) in "0123456789ABCDEF") - 1
	end repeat
	return n
end hexUnit
on textFromHex(h)
	set cps to {}
	set i to 1
	repeat while i + 3 ≤ (length of h)
		set u to my hexUnit(text i thru (i + 3) of h)
		set i to i + 4
		if u ≥ 55296 and u ≤ 56319 and i + 3 ≤ (length of h) then
			set u to 65536 + (u - 55296) * 1024 + (my hexUnit(text i thru (i + 3) of h)) - 56320
			set i to i + 4
		end if
		set end of cps to u
	end repeat
	if cps is {} then return ""
	return (string id cps)
end textFromHex
on refreshTrack(pid)
	try
		with timeout of 60 seconds
			tell application "Music"
				set trk to (first file track of library playlist 1 whose persistent ID is pid)
				refresh trk
				set loc to (get location of trk)
			end tell
		end timeout
		if loc is missing value then return "error: file missing"
		return POSIX path of loc
	on error msg number n
		return "error: " & msg & " (" & n & ")"
	end try
end refreshTrack
on setTextField(pid, fld, h)
	set v to my textFromHex(h)
	set trk to my libTrack(pid)
	tell application "Music"
		if fld is "artist" then
			set artist of trk to v
		else if fld is "album" then
			set album of trk to v
		else
			set album artist of trk to v
		end if
		set nowThere to {artist of trk, album of trk, album artist of trk}
	end tell
	considering case
		if nowThere contains {v} then return "ok"
	end considering
	return "error: not taken over"
end setTextField
on mergePlays(fromPid, toPid)
	set src to my libTrack(fromPid)
	set dst to my libTrack(toPid)
	tell application "Music"
		set played count of dst to (played count of dst) + (played count of src)
		set ds to played date of src
		set dd to played date of dst
		if ds is not missing value then
			if dd is missing value then
				set played date of dst to ds
			else if ds > dd then
				set played date of dst to ds
			end if
		end if
		return "" & (played count of dst)
	end tell
end mergePlays
on copyInfo(fromPid, toPid)
	set src to my libTrack(fromPid)
	set dst to my libTrack(toPid)
	tell application "Music"
		considering case
			if (name of dst) is not (name of src) then set name of dst to (get name of src)
			if (artist of dst) is not (artist of src) then set artist of dst to (get artist of src)
			if (album of dst) is not (album of src) then set album of dst to (get album of src)
			if (year of dst) is not (year of src) then set year of dst to (get year of src)
			-- same form: album artist, composer, genre, track/disc number and count, compilation, enabled, bpm, comment, grouping, sort fields, lyrics
		end considering
		if (rating kind of src) is user then set rating of dst to (get rating of src)
	end tell
	return "ok"
end copyInfo
on addToPlaylist(pid, nm)
	set pl to my plainPlaylist(nm, true)
	set trk to my libTrack(pid)
	tell application "Music"
		if not (exists (some track of pl whose persistent ID is pid)) then duplicate trk to pl
		return "" & (count of tracks of pl)
	end tell
end addToPlaylist
on importFile(p, nm)
	set f to ((POSIX file p) as alias)
	set trk to missing value
	set newPid to ""
	tell application "Music"
		with timeout of 600 seconds
			add f
			try
				set trk to result
			end try
		end timeout
		if trk is missing value then return "error: not imported"
		if class of trk is list then set trk to item 1 of trk
		repeat 20 times
			try
				set newPid to persistent ID of trk
				exit repeat
			on error
				delay 0.5
			end try
		end repeat
	end tell
	if newPid is "" then return "error: no persistent ID"
	my addToPlaylist(newPid, nm)
	return newPid
end importFile
on relocate(pid, p)
	set f to ((POSIX file p) as alias)
	tell application "Music"
		set trk to (first file track of library playlist 1 whose persistent ID is pid)
		set location of trk to f
		set loc to (get location of trk)
	end tell
	if loc is missing value then return "error: still missing"
	return POSIX path of loc
end relocate
on dropTrack(pid)
	tell application "Music"
		delete (first track of library playlist 1 whose persistent ID is pid)
		if (exists (some track of library playlist 1 whose persistent ID is pid)) then return "error: still there"
	end tell
	return "ok"
end dropTrack
on dropPlaylists(pfx, maxN)
	set doomed to {}
	tell application "Music"
		try -- plain playlists only, so that folders and smart lists cannot fill the quota
			set nms to (name of every user playlist whose (smart is false) and (special kind is none))
			set pids to (persistent ID of every user playlist whose (smart is false) and (special kind is none))
		on error number -1728 -- none at all
			return "0"
		end try
	end tell
	if (count of nms) is not (count of pids) then error "library changed" number -2700
	considering case
		repeat with i from 1 to (count of nms)
			if (count of doomed) ≥ maxN then exit repeat
			if (item i of nms) starts with pfx then set end of doomed to item i of pids
		end repeat
	end considering
	repeat with i from 1 to (count of doomed)
		set k to item i of doomed
		tell application "Music" to delete (every user playlist whose persistent ID is k)
	end repeat
	return "" & (count of doomed)
end dropPlaylists
on rebuildStep(srcPid, tmpName, oldPids, newPid, maxN)
	set tmp to my plainPlaylist(tmpName, true)
	set newT to my libTrack(newPid)
	tell application "Music"
		set src to (first user playlist whose persistent ID is srcPid)
		set total to (count of tracks of src)
		set n to (count of tracks of tmp)
		if n > total then error "temporary playlist too long" number -2700
		if n < total then
			set lastI to n + maxN
			if lastI > total then set lastI to total
			set wasFixed to fixed indexing
			set fixed indexing to true
			set batch to {}
			repeat with i from (n + 1) to lastI
				set end of batch to (get track i of src)
			end repeat
			set fixed indexing to wasFixed
			repeat with i from 1 to (count of batch)
				set trk to item i of batch
				if oldPids contains (get persistent ID of trk) then set trk to newT
				duplicate trk to tmp
			end repeat
			return "" & lastI & " of " & total
		end if
		set plName to name of src
		delete src
		set name of tmp to plName
	end tell
	return "Done, " & total & " tracks"
end rebuildStep
on playlistLines(minLen, wantAll)
	set best to 0
	set out to ""
	tell application "Music"
		set pls to (get every user playlist)
		repeat with i from 1 to (count of pls)
			set pl to item i of pls
			set n to (count of tracks of pl)
			if n > best then set best to n
			if n > minLen then
				set out to out & (persistent ID of pl) & tab & (name of pl)
				if wantAll then set out to out & tab & n & tab & (duration of pl) & tab & (smart of pl) & tab & ((special kind of pl) as text)
				set out to out & linefeed
			end if
		end repeat
	end tell
	if minLen < 0 and not wantAll then return "" & best
	return out
end playlistLines
on artworkCounts(fromI, toI)
	set out to ""
	tell application "Music"
		set lastI to (count of tracks of library playlist 1)
		if lastI > toI then set lastI to toI
		repeat with i from fromI to lastI
			set trk to (track i of library playlist 1)
			set out to out & (persistent ID of trk) & tab & (count of artworks of trk) & linefeed
		end repeat
	end tell
	return out
end artworkCounts
on playPath(p)
	set f to ((POSIX file p) as alias)
	tell application "Music" to play f
	return "ok"
end playPath
on playTitle(ti, ar)
	tell application "Music"
		set hits to (every track of library playlist 1 whose (name is ti) and (artist is ar))
		if (count of hits) is 0 then return "error: not found"
		play (item 1 of hits)
		return (persistent ID of (item 1 of hits))
	end tell
end playTitle
on quitMusic()
	if application "Music" is running then tell application "Music" to quit
	repeat 40 times
		if application "Music" is not running then return "ok"
		delay 0.25
	end repeat
	return "error: still running"
end quitMusic
