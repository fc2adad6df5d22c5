-- The handlers that the bridge calls by name, all parameters texts. A failure is raised as an error, whose text
-- says "timed out" where the application was too slow. Tracks and playlists go by their persistent IDs.

-- ---- Shared ----

-- Too slow, ended, and not running: no fault of a track.
property applicationFaults : {-1712, -609, -600}

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
			if applicationFaults contains n then error msg number n
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

on isInLibrary(pid)
	tell application "iTunes"
		return (exists (first track of library playlist 1 whose persistent ID is pid))
	end tell
end isInLibrary

-- Takes a track out of the library; the file stays. Nothing comes back.
on removeTrackWithPID(pid)
	try
		with timeout of 60 seconds
			set trk to my libTrack(pid)
			try
				tell application "iTunes" to delete trk
			on error msg number n
				-- A slow application may have done it all the same.
				if n is not -1712 or my isInLibrary(pid) then error msg number n
			end try
			set isThere to my isInLibrary(pid)
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
-- A temporary playlist grows into a copy of the playlist with the old tracks replaced. While it bears the
-- temporary name the playlist is untouched, and the copy may be dropped at any time. Once it is whole it is
-- renamed, and only then the playlist is emptied and filled from it: from then on the copy may be all that is
-- left of the old entries, and is deleted only when they stand in the playlist. Each call finds out by itself how
-- far it is.

property batchSize : 200
property swapSuffix : "-swap"

-- The persistent IDs of the entries in their order, each with a line feed behind it.
on entriesOf(pl)
	tell application "iTunes"
		if (count of tracks of pl) is 0 then return ""
		set pids to (get persistent ID of every track of pl)
	end tell
	return my joinTexts(pids, linefeed) & linefeed
end entriesOf

on countOfEntries(entries)
	return (count of my splitText(entries, linefeed)) - 1
end countOfEntries

on replacedEntries(entries, oldPids, newPid)
	repeat with i from 1 to (count of oldPids)
		if (item i of oldPids) is not "" then set entries to my replaceText(entries, item i of oldPids, newPid)
	end repeat
	return entries
end replacedEntries

-- Places of entries count only if the application does not sort them. What was set before comes back.
on fixIndexing()
	tell application "iTunes"
		set wasFixed to fixed indexing
		set fixed indexing to true
	end tell
	return wasFixed
end fixIndexing

on restoreIndexing(wasFixed)
	if wasFixed is missing value then return
	try
		with timeout of 10 seconds
			tell application "iTunes" to set fixed indexing to wasFixed
		end timeout
	end try
end restoreIndexing

on incrementalRebuildPlaylist(plPid, oldList, newPid, tempName)
	set oldPids to my splitText(oldList, ",")
	set wasFixed to missing value
	try
		with timeout of 30 seconds
			set wasFixed to my fixIndexing()
			set answer to my rebuildStep(my playlistOfPid(plPid), oldPids, newPid, tempName)
		end timeout
	on error msg number n
		my restoreIndexing(wasFixed)
		my giveUp(msg, n)
	end try
	my restoreIndexing(wasFixed)
	return answer
end incrementalRebuildPlaylist

on rebuildStep(src, oldPids, newPid, tempName)
	if not my isPlain(src) then error "a smart playlist or a folder cannot be rebuilt"
	set swapPl to my plainPlaylistNamed(tempName & swapSuffix)
	if swapPl is not missing value then return my finishSwap(swapPl, src, oldPids, newPid)
	set entries to my entriesOf(src)
	set wanted to my replacedEntries(entries, oldPids, newPid)
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
			tell application "iTunes" to set name of temp to tempName & swapSuffix
			return my finishSwap(temp, src, oldPids, newPid)
		end if
	end considering
	-- The user may have changed the playlist since.
	if not my isBeginning(copied, wanted) then return my startedAgain(temp)
	return my copyBatch(src, temp, oldPids, newPid, wanted)
end rebuildStep

on isBeginning(part, entries)
	if part is "" then return true
	considering case
		return (entries starts with part)
	end considering
end isBeginning

on startedAgain(temp)
	tell application "iTunes" to delete temp
	return "started again"
end startedAgain

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
		if applicationFaults contains errNumber then error msg number errNumber
		set broken to my copyOneByOne(batch, pids, temp, n)
	end try
	if broken is not {} then
		tell application "iTunes" to set plName to (get name of src)
		return "broken:|@" & my plainName(plName) & "|@" & my joinTexts(broken, "|@")
	end if
	if not my isBeginning(my entriesOf(temp), wanted) then return my startedAgain(temp)
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
			if applicationFaults contains errNumber then error msg number errNumber
			set end of broken to item i of pids
		end try
	end repeat
	return broken
end copyOneByOne

on finishSwap(swapPl, src, oldPids, newPid)
	my putBack(swapPl, src, oldPids, newPid)
	tell application "iTunes" to delete swapPl
	set entries to my entriesOf(src)
	considering case
		-- The copy may stem from an earlier repair, and the user may have added old tracks since.
		if my replacedEntries(entries, oldPids, newPid) is not entries then return "put back"
	end considering
	return "Done, " & my countOfEntries(entries) & " tracks"
end finishSwap

-- Has a playlist hold what its copy holds, whether it is still untouched, was emptied, or is filled again. What
-- the user has added since stays, behind the entries of the copy.
on putBack(swapPl, src, oldPids, newPid)
	set copied to my entriesOf(swapPl)
	set entries to my entriesOf(src)
	set wanted to my replacedEntries(entries, oldPids, newPid)
	if copied is "" then return
	considering case
		if entries contains copied then
			my dropDoubledHead(src, entries, copied)
		else if wanted is copied or my isBeginning(entries, copied) then
			my fill(swapPl, src, copied)
		else if not (wanted contains copied) and not my isEdited(entries, copied) then
			my putInFront(swapPl, src, entries, copied)
		end if
	end considering
end putBack

on fill(swapPl, src, copied)
	considering case
		tell application "iTunes"
			if (count of tracks of src) > 0 then delete every track of src
			duplicate (every track of swapPl) to src
		end tell
		if my entriesOf(src) is copied then return
		-- An application that orders a bulk copy by itself.
		tell application "iTunes"
			if (count of tracks of src) > 0 then delete every track of src
			repeat with i from 1 to (count of tracks of swapPl)
				duplicate (track i of swapPl) to src
			end repeat
		end tell
		if my entriesOf(src) is not copied then error "the playlist could not be filled again from its copy"
	end considering
end fill

-- The entries of a playlist that its copy does not have.
on entriesBeside(entries, copied)
	set pids to my splitText(entries, linefeed)
	set others to ""
	considering case
		repeat with i from 1 to (count of pids) - 1
			set entry to (item i of pids) & linefeed
			if copied does not contain entry then set others to others & entry
		end repeat
	end considering
	return others
end entriesBeside

-- True if most of the copy stands in the playlist: it was never emptied, or was filled and then changed.
on isMostlyThere(entries, copied)
	set others to my entriesBeside(entries, copied)
	set held to (my countOfEntries(entries)) - (my countOfEntries(others))
	return held * 2 > (my countOfEntries(copied))
end isMostlyThere

on isEdited(entries, copied)
	if (my countOfEntries(entries)) is not (my countOfEntries(copied)) then return false
	return my isMostlyThere(entries, copied)
end isEdited

-- The entries that stand behind those of the copy once it is put back.
on addedEntries(entries, copied)
	if my isMostlyThere(entries, copied) then return my entriesBeside(entries, copied)
	return entries
end addedEntries

-- The new order is put behind the present one, which then goes: there is no moment without entries.
on putInFront(swapPl, src, entries, copied)
	set added to my addedEntries(entries, copied)
	tell application "iTunes"
		set present to (get every track of src)
		set ordered to (get every track of swapPl)
	end tell
	considering case
		if added is entries then
			set ordered to ordered & present
		else
			set pids to my splitText(entries, linefeed)
			repeat with i from 1 to (count of present)
				if copied does not contain (item i of pids) then set end of ordered to item i of present
			end repeat
		end if
		tell application "iTunes"
			duplicate ordered to src
			delete (tracks 1 thru (count of present) of src)
		end tell
		if my entriesOf(src) is not copied & added then error "the playlist could not be filled again from its copy"
	end considering
end putInFront

-- After an end between the two steps of putInFront.
on dropDoubledHead(src, entries, copied)
	set parts to my splitText(entries, copied)
	if (count of parts) is not 2 or (item 1 of parts) is "" or (item 2 of parts) is "" then return
	considering case
		if my addedEntries(item 1 of parts, copied) is not (item 2 of parts) then return
	end considering
	tell application "iTunes" to delete (tracks 1 thru (my countOfEntries(item 1 of parts)) of src)
end dropDoubledHead

-- Deletes the playlists whose names begin with a prefix. A copy whose playlist may lack entries is first put
-- back; one whose playlist is gone stays.
on incrementalPlaylistDelete(prefix)
	if prefix is "" then error "no prefix"
	set wasFixed to missing value
	try
		set wasFixed to my fixIndexing()
		tell application "iTunes" to set pls to (get every user playlist)
		repeat with i from 1 to (count of pls)
			set pl to item i of pls
			if my isPlain(pl) then
				tell application "iTunes" to set plName to (get name of pl)
				if my isBeginning(prefix, plName) then my deleteTemporary(pl, plName)
			end if
		end repeat
	on error msg number n
		my restoreIndexing(wasFixed)
		my giveUp(msg, n)
	end try
	my restoreIndexing(wasFixed)
	return
end incrementalPlaylistDelete

on deleteTemporary(pl, plName)
	if plName ends with swapSuffix and (length of plName) > 21 then
		set plPid to text -21 thru -6 of plName
		tell application "iTunes" to set hits to (get every user playlist whose persistent ID is plPid)
		if hits is {} then return
		my putBack(pl, item 1 of hits, {}, "")
	end if
	tell application "iTunes" to delete pl
end deleteTemporary
