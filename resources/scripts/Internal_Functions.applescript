-- The handlers that the bridge calls by name, all parameters texts. A failure is raised as an error, whose text
-- says "timed out" where the application was too slow. Tracks and playlists go by their persistent IDs.

-- ---- Shared ----

-- To be called with what a `try` has caught.
on giveUp(msg, n)
	if n is -1712 then error "timed out: " & msg number n
	error msg number n
end giveUp

on joinTexts(textList, mark)
	set oldDelimiters to AppleScript's text item delimiters
	set AppleScript's text item delimiters to mark
	set joined to textList as text
	set AppleScript's text item delimiters to oldDelimiters
	return joined
end joinTexts

on splitText(t, mark)
	set oldDelimiters to AppleScript's text item delimiters
	set AppleScript's text item delimiters to mark
	set parts to text items of t
	set AppleScript's text item delimiters to oldDelimiters
	return parts
end splitText

on replaceText(t, oldText, newText)
	return my joinTexts(my splitText(t, oldText), newText)
end replaceText

on libTrack(pid)
	tell application "iTunes"
		return (first track of library playlist 1 whose persistent ID is pid)
	end tell
end libTrack

on libFileTrack(pid)
	tell application "iTunes"
		return (first file track of library playlist 1 whose persistent ID is pid)
	end tell
end libFileTrack

on playlistOfPid(plPid)
	tell application "iTunes"
		return (first user playlist whose persistent ID is plPid)
	end tell
end playlistOfPid

-- True for a playlist that the user fills by hand.
on isPlain(pl)
	tell application "iTunes"
		if (smart of pl) then return false
		return (((special kind of pl) as text) is "none")
	end tell
end isPlain

-- The plain playlist of exactly that name, or missing value.
on plainPlaylistNamed(nm)
	tell application "iTunes" to set hits to (get every user playlist whose name is nm)
	repeat with i from 1 to (count of hits)
		set pl to item i of hits
		tell application "iTunes" to set plName to (get name of pl)
		considering case
			if plName is nm and my isPlain(pl) then return pl
		end considering
	end repeat
	return missing value
end plainPlaylistNamed

on madePlaylistNamed(nm)
	set pl to my plainPlaylistNamed(nm)
	if pl is not missing value then return pl
	tell application "iTunes" to return (make new user playlist with properties {name:nm})
end madePlaylistNamed

-- The plain playlists that are neither of the three names nor begin with the prefix.
on countedPlaylists(unkeptName, adoptedName, prefix, convertingName)
	tell application "iTunes" to set pls to (get every user playlist)
	set found to {}
	repeat with i from 1 to (count of pls)
		set pl to item i of pls
		if my isPlain(pl) then
			tell application "iTunes" to set plName to (get name of pl)
			considering case
				set isOurs to (plName is unkeptName) or (plName is adoptedName) or (plName is convertingName)
				if not isOurs and not (plName starts with prefix) then set end of found to pl
			end considering
		end if
	end repeat
	return found
end countedPlaylists

-- ---- Tracks ----

-- Makes a file the location of a track: "OK", or the path that the track has instead.
on reunitePathWithPID(p, pid)
	try
		set f to ((POSIX file p) as alias)
		with timeout of 60 seconds
			set trk to my libFileTrack(pid)
			tell application "iTunes"
				set location of trk to f
				set loc to (get location of trk)
			end tell
		end timeout
	on error msg number n
		my giveUp(msg, n)
	end try
	if loc is missing value then error "the file was not taken as the track's location"
	set nowThere to POSIX path of loc
	considering case
		if nowThere is p then return "OK"
	end considering
	return nowThere
end reunitePathWithPID

-- Adds a file to the library and to a playlist, unless its name is empty: the persistent ID of the track.
on addPathToiTunesPlaylist(p, nm)
	try
		set f to ((POSIX file p) as alias)
		with timeout of 600 seconds
			set trk to my addedTrack(f)
			set newPid to my pidOfNewTrack(trk)
			if nm is not "" then my addOnce(newPid, my madePlaylistNamed(nm))
		end timeout
	on error msg number n
		my giveUp(msg, n)
	end try
	return newPid
end addPathToiTunesPlaylist

on addedTrack(f)
	set trk to missing value
	tell application "iTunes"
		try
			set trk to (add f)
			if class of trk is list then set trk to item 1 of trk
		on error msg number n
			-- A file that is refused gives no reply.
			if n is not -2753 and n is not -2763 then error msg number n
			set trk to missing value
		end try
	end tell
	if trk is missing value then error "the file was not added"
	return trk
end addedTrack

-- The import of a large file may still be under way.
on pidOfNewTrack(trk)
	repeat 20 times
		try
			tell application "iTunes" to return (get persistent ID of trk)
		on error msg number n
			if n is -1712 then error msg number n
			delay 0.5
		end try
	end repeat
	error "timed out: the new track has no persistent ID"
end pidOfNewTrack

on addOnce(pid, pl)
	set trk to my libTrack(pid)
	tell application "iTunes"
		if not (exists (first track of pl whose persistent ID is pid)) then duplicate trk to pl
	end tell
end addOnce

-- Takes a track out of the library; the file stays. Nothing comes back.
on removeTrackWithPID(pid)
	try
		with timeout of 60 seconds
			set trk to my libTrack(pid)
			tell application "iTunes"
				delete trk
				set isThere to (exists (first track of library playlist 1 whose persistent ID is pid))
			end tell
		end timeout
	on error msg number n
		my giveUp(msg, n)
	end try
	if isThere then error "the track is still there"
	return
end removeTrackWithPID

on addTrackPIDToiTunesPlaylistPID(pid, plPid)
	try
		with timeout of 60 seconds
			set trk to my libTrack(pid)
			set pl to my playlistOfPid(plPid)
			if not my isPlain(pl) then error "a smart playlist or a folder takes no tracks"
			tell application "iTunes" to duplicate trk to pl
		end timeout
	on error msg number n
		my giveUp(msg, n)
	end try
	return "Done"
end addTrackPIDToiTunesPlaylistPID

-- ---- Lengths ----

on getMaxPlaylistLength(unkeptName, adoptedName, prefix, convertingName)
	set longest to 0
	try
		set pls to my countedPlaylists(unkeptName, adoptedName, prefix, convertingName)
		repeat with i from 1 to (count of pls)
			tell application "iTunes" to set n to (count of tracks of (item i of pls))
			if n > longest then set longest to n
		end repeat
	on error msg number n
		my giveUp(msg, n)
	end try
	return "" & longest
end getMaxPlaylistLength

-- The names and the persistent IDs of the playlists of that length or more: names parted by |@, then @|, then
-- persistent IDs parted by |@.
on getPlaylistNamesAndPIDsAboveLength(minLength, unkeptName, adoptedName, prefix, convertingName)
	set least to minLength as integer
	set plNames to {}
	set plPids to {}
	try
		set pls to my countedPlaylists(unkeptName, adoptedName, prefix, convertingName)
		repeat with i from 1 to (count of pls)
			set pl to item i of pls
			tell application "iTunes"
				if (count of tracks of pl) ≥ least then
					set end of plNames to my plainName(name of pl)
					set end of plPids to (get persistent ID of pl)
				end if
			end tell
		end repeat
	on error msg number n
		my giveUp(msg, n)
	end try
	return my joinTexts(plNames, "|@") & "@|" & my joinTexts(plPids, "|@")
end getPlaylistNamesAndPIDsAboveLength

-- A name that cannot be taken for a mark between names.
on plainName(plName)
	set plName to my replaceText(plName, "|", "/")
	if plName is "" or plName ends with "@" then return plName & " "
	return plName
end plainName

-- ---- The rebuild of a playlist ----
--
-- A temporary playlist grows into a copy of the playlist with the old tracks replaced. Once it is whole it is
-- renamed, and only then the playlist is emptied and filled from it. So at every instant the whole old order or
-- the whole new one stands in the playlist or in the copy, and each call finds out by itself how far it is.

property batchSize : 200
property wholeSuffix : "-whole"

-- The persistent IDs of the entries in their order, each with a line feed behind it.
on entriesOf(pl)
	tell application "iTunes"
		if (count of tracks of pl) is 0 then return ""
		set pids to (get persistent ID of every track of pl)
	end tell
	return my joinTexts(pids, linefeed) & linefeed
end entriesOf

on replacedEntries(entries, oldPids, newPid)
	repeat with i from 1 to (count of oldPids)
		if (item i of oldPids) is not "" then set entries to my replaceText(entries, item i of oldPids, newPid)
	end repeat
	return entries
end replacedEntries

on incrementalRebuildPlaylist(plPid, oldList, newPid, tempName)
	set oldPids to my splitText(oldList, ",")
	set wasFixed to missing value
	try
		with timeout of 30 seconds
			tell application "iTunes"
				set wasFixed to fixed indexing
				set fixed indexing to true
			end tell
			set answer to my rebuildStep(my playlistOfPid(plPid), oldPids, newPid, tempName)
			tell application "iTunes" to set fixed indexing to wasFixed
		end timeout
	on error msg number n
		if wasFixed is not missing value and n is not -1712 then
			try
				tell application "iTunes" to set fixed indexing to wasFixed
			end try
		end if
		my giveUp(msg, n)
	end try
	return answer
end incrementalRebuildPlaylist

on rebuildStep(src, oldPids, newPid, tempName)
	if not my isPlain(src) then error "a smart playlist or a folder cannot be rebuilt"
	set entries to my entriesOf(src)
	set wanted to my replacedEntries(entries, oldPids, newPid)
	set wholePl to my plainPlaylistNamed(tempName & wholeSuffix)
	if wholePl is not missing value then return my finishSwap(wholePl, src, wanted, oldPids, newPid)
	set temp to my plainPlaylistNamed(tempName)
	considering case
		if wanted is entries then
			if temp is not missing value then tell application "iTunes" to delete temp
			return "Done, nothing to replace"
		end if
	end considering
	if temp is missing value then set temp to my madePlaylistNamed(tempName)
	set copied to my entriesOf(temp)
	considering case
		if copied is wanted then
			tell application "iTunes" to set name of temp to tempName & wholeSuffix
			return my finishSwap(temp, src, wanted, oldPids, newPid)
		end if
		if not (wanted starts with copied) then
			-- The user has changed the playlist since.
			tell application "iTunes" to delete temp
			return "started again"
		end if
	end considering
	return my copyBatch(src, temp, oldPids, newPid, wanted)
end rebuildStep

-- Copies the next entries and answers how far it is, or which of them cannot be copied.
on copyBatch(src, temp, oldPids, newPid, wanted)
	set newTrack to my libTrack(newPid)
	tell application "iTunes"
		set total to (count of tracks of src)
		set n to (count of tracks of temp)
		set lastPlace to n + batchSize
		if lastPlace > total then set lastPlace to total
		set batch to (get tracks (n + 1) thru lastPlace of src)
		set pids to (get persistent ID of tracks (n + 1) thru lastPlace of src)
	end tell
	repeat with i from 1 to (count of batch)
		if oldPids contains (item i of pids) then set item i of batch to newTrack
	end repeat
	set broken to {}
	try
		tell application "iTunes" to duplicate batch to temp
	on error msg number errNumber
		if errNumber is -1712 then error msg number errNumber
		set broken to my copyOneByOne(batch, pids, temp, n)
	end try
	if broken is not {} then
		tell application "iTunes" to set plName to (get name of src)
		return "broken:|@" & my plainName(plName) & "|@" & my joinTexts(broken, "|@")
	end if
	considering case
		if not (wanted starts with my entriesOf(temp)) then error "the copy of the playlist came out in another order"
	end considering
	return "copied " & lastPlace & " of " & total
end copyBatch

-- After a batch that was refused as a whole: the persistent IDs of those that are refused by themselves.
on copyOneByOne(batch, pids, temp, n)
	set broken to {}
	tell application "iTunes"
		if (count of tracks of temp) > n then delete (tracks (n + 1) thru -1 of temp)
	end tell
	repeat with i from 1 to (count of batch)
		try
			tell application "iTunes" to duplicate (item i of batch) to temp
		on error msg number errNumber
			-- Neither slowness nor the application's end is the track's fault.
			if {-1712, -609, -600} contains errNumber then error msg number errNumber
			set end of broken to item i of pids
		end try
	end repeat
	return broken
end copyOneByOne

-- A whole copy stands ready. It is stale if the playlist holds something that is neither the old order, nor a
-- part of the new one that a swap has left.
on finishSwap(wholePl, src, wanted, oldPids, newPid)
	set copied to my entriesOf(wholePl)
	considering case
		if wanted is not copied and not (copied starts with wanted) and not (copied ends with wanted) then
			tell application "iTunes" to delete wholePl
			return "started again"
		end if
	end considering
	my putBack(wholePl, src, copied)
	tell application "iTunes"
		set total to (count of tracks of wholePl)
		delete wholePl
	end tell
	considering case
		-- The copy may stem from an earlier repair, with other tracks.
		if my replacedEntries(copied, oldPids, newPid) is not copied then return "put back"
	end considering
	return "Done, " & total & " tracks"
end finishSwap

-- Makes a playlist equal to the whole copy of it.
on putBack(wholePl, src, copied)
	considering case
		if my entriesOf(src) is copied then return
		tell application "iTunes"
			if (count of tracks of src) > 0 then delete every track of src
			duplicate (every track of wholePl) to src
		end tell
		if my entriesOf(src) is copied then return
		-- An application that orders a bulk copy by itself.
		tell application "iTunes"
			if (count of tracks of src) > 0 then delete every track of src
			repeat with i from 1 to (count of tracks of wholePl)
				duplicate (track i of wholePl) to src
			end repeat
		end tell
		if my entriesOf(src) is not copied then error "the playlist could not be filled again from its copy"
	end considering
end putBack

-- Deletes the playlists whose names begin with a prefix. A whole copy whose playlist has lost entries is first
-- put back; one whose playlist is gone stays.
on incrementalPlaylistDelete(prefix)
	if prefix is "" then error "no prefix"
	try
		tell application "iTunes" to set pls to (get every user playlist)
		repeat with i from 1 to (count of pls)
			set pl to item i of pls
			if my isPlain(pl) then
				tell application "iTunes" to set plName to (get name of pl)
				considering case
					set isDoomed to (plName starts with prefix)
				end considering
				if isDoomed then my deleteTemporary(pl, plName)
			end if
		end repeat
	on error msg number n
		my giveUp(msg, n)
	end try
	return
end incrementalPlaylistDelete

on deleteTemporary(pl, plName)
	if plName ends with wholeSuffix and (length of plName) > 22 then
		set plPid to text -22 thru -7 of plName
		tell application "iTunes" to set hits to (get every user playlist whose persistent ID is plPid)
		if hits is {} then return
		set src to item 1 of hits
		tell application "iTunes" to set isShort to ((count of tracks of src) < (count of tracks of pl))
		if isShort then my putBack(pl, src, my entriesOf(pl))
	end if
	tell application "iTunes" to delete pl
end deleteTemporary
