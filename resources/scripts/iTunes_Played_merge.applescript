-- Moves the plays and skips of the first track to the second: the counts are summed, of the dates the later
-- stays, and a rating goes over only where the second track has none. The first track's counts go, so that a
-- second merge of the two, either way round, adds nothing twice. Answers "merged" when all of it is done.
on laterOf(dateA, dateB)
	if dateA is missing value then return dateB
	if dateB is missing value then return dateA
	if dateA > dateB then return dateA
	return dateB
end laterOf

on givenRating(trk)
	tell application "iTunes"
		if ((rating kind of trk) as text) is not "user" then return 0
		return (rating of trk)
	end tell
end givenRating

on mergePlayed(fromPid, toPid)
	if fromPid is toPid then return
	with timeout of 60 seconds
		tell application "iTunes"
			set src to (first track of library playlist 1 whose persistent ID is fromPid)
			set dst to (first track of library playlist 1 whose persistent ID is toPid)
			set plays to (played count of src)
			set skips to (skipped count of src)
			set lastPlay to my laterOf(played date of src, played date of dst)
			set lastSkip to my laterOf(skipped date of src, skipped date of dst)
			set stars to my givenRating(src)
			if stars > 0 and my givenRating(dst) is 0 then set rating of dst to stars
			-- A count may move its date, so the date comes behind it.
			if skips > 0 then set skipped count of dst to (skipped count of dst) + skips
			if lastSkip is not missing value then
				if (skipped date of dst) is not lastSkip then set skipped date of dst to lastSkip
			end if
			if skips > 0 then set skipped count of src to (skipped count of src) - skips
			if plays > 0 then set played count of dst to (played count of dst) + plays
			if lastPlay is not missing value then
				if (played date of dst) is not lastPlay then set played date of dst to lastPlay
			end if
			if plays > 0 then set played count of src to (played count of src) - plays
		end tell
	end timeout
end mergePlayed

try
	my mergePlayed("%@", "%@")
on error msg number n
	if n is -1712 then return "error: timed out: " & msg
	return "error: " & msg
end try
return "merged"
