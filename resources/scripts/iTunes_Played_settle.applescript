-- Behind a merge of plays and skips that was broken off: takes from the first track what the second one has got
-- of it already. The numbers are the counts of both tracks before that merge. Answers "settled", and
-- that too when one of the tracks is gone.
on laterOf(dateA, dateB)
	if dateA is missing value then return dateB
	if dateB is missing value then return dateA
	if dateA > dateB then return dateA
	return dateB
end laterOf

on settlePlays(src, dst, plays, playsBefore)
	tell application "iTunes"
		if plays is 0 or (played count of src) < plays then return
		if (played count of dst) < playsBefore + plays then return
		set lastPlay to my laterOf(played date of src, played date of dst)
		if lastPlay is not missing value then
			if (played date of dst) is not lastPlay then set played date of dst to lastPlay
		end if
		set played count of src to (played count of src) - plays
	end tell
end settlePlays

on settleSkips(src, dst, skips, skipsBefore)
	tell application "iTunes"
		if skips is 0 or (skipped count of src) < skips then return
		if (skipped count of dst) < skipsBefore + skips then return
		set lastSkip to my laterOf(skipped date of src, skipped date of dst)
		if lastSkip is not missing value then
			if (skipped date of dst) is not lastSkip then set skipped date of dst to lastSkip
		end if
		set skipped count of src to (skipped count of src) - skips
	end tell
end settleSkips

on settle(fromPid, toPid)
	with timeout of 60 seconds
		tell application "iTunes"
			if not (exists (first track of library playlist 1 whose persistent ID is fromPid)) then return
			if not (exists (first track of library playlist 1 whose persistent ID is toPid)) then return
			set src to (first track of library playlist 1 whose persistent ID is fromPid)
			set dst to (first track of library playlist 1 whose persistent ID is toPid)
		end tell
		my settlePlays(src, dst, %@, %@)
		my settleSkips(src, dst, %@, %@)
	end timeout
end settle

try
	my settle("%@", "%@")
on error msg number n
	if n is -1712 then return "error: timed out: " & msg
	return "error: " & msg
end try
return "settled"
