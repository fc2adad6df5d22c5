-- Behind a merge of plays and skips that was broken off: takes from the first track what the second one has got
-- of it already. The numbers are the counts of both tracks before that merge, and how many seconds ago it began.
-- Answers "settled", and that too when one of the tracks is gone.
--
-- A first track that holds as many as before has not been dealt with, or has, and was played as often since; a
-- second one that holds the sum has got them, or was played as often since. Where the time since is long enough
-- for that, the plays stay: they may be the user's own.
on mayBeNew(counts, secondsEach, lastDate, begun)
	if lastDate is missing value then return false
	return (lastDate - begun) ≥ counts * secondsEach
end mayBeNew

on shortestPlay(trk)
	tell application "iTunes" to set playLength to (duration of trk)
	if playLength is missing value then return 2
	if playLength < 2 then return 2
	return playLength
end shortestPlay

on laterOf(dateA, dateB)
	if dateA is missing value then return dateB
	if dateB is missing value then return dateA
	if dateA > dateB then return dateA
	return dateB
end laterOf

on settlePlays(src, dst, plays, playsBefore, begun)
	tell application "iTunes"
		set {srcPlays, dstPlays} to {played count of src, played count of dst}
		set {srcDate, dstDate} to {played date of src, played date of dst}
	end tell
	if plays is 0 or srcPlays < plays or dstPlays < playsBefore + plays then return
	if my mayBeNew(srcPlays, my shortestPlay(src), srcDate, begun) then return
	if my mayBeNew(dstPlays - playsBefore, my shortestPlay(dst), dstDate, begun) then return
	set lastPlay to my laterOf(srcDate, dstDate)
	tell application "iTunes"
		if lastPlay is not missing value and dstDate is not lastPlay then set played date of dst to lastPlay
		set played count of src to srcPlays - plays
	end tell
end settlePlays

on settleSkips(src, dst, skips, skipsBefore, begun)
	tell application "iTunes"
		set {srcSkips, dstSkips} to {skipped count of src, skipped count of dst}
		set {srcDate, dstDate} to {skipped date of src, skipped date of dst}
	end tell
	if skips is 0 or srcSkips < skips or dstSkips < skipsBefore + skips then return
	if my mayBeNew(srcSkips, 2, srcDate, begun) then return
	if my mayBeNew(dstSkips - skipsBefore, 2, dstDate, begun) then return
	set lastSkip to my laterOf(srcDate, dstDate)
	tell application "iTunes"
		if lastSkip is not missing value and dstDate is not lastSkip then set skipped date of dst to lastSkip
		set skipped count of src to srcSkips - skips
	end tell
end settleSkips

on settle(fromPid, toPid, begun)
	with timeout of 60 seconds
		tell application "iTunes"
			if not (exists (first track of library playlist 1 whose persistent ID is fromPid)) then return
			if not (exists (first track of library playlist 1 whose persistent ID is toPid)) then return
			set src to (first track of library playlist 1 whose persistent ID is fromPid)
			set dst to (first track of library playlist 1 whose persistent ID is toPid)
		end tell
		my settlePlays(src, dst, %@, %@, begun)
		my settleSkips(src, dst, %@, %@, begun)
	end timeout
end settle

try
	my settle("%@", "%@", (current date) - %@)
on error msg number n
	if n is -1712 then return "error: timed out: " & msg
	return "error: " & msg
end try
return "settled"
