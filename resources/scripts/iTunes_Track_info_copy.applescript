-- Gives the second track the names, numbers and texts of the first. What is equal is not written; what one
-- field refuses does not keep the others back. Nothing comes back when all of it worked.
property failures : {}

on note(fieldName, msg, n)
	if n is -1712 then error msg number n
	set end of failures to fieldName & " (" & msg & ")"
end note

on copyTexts(src, dst)
	tell application "iTunes"
		considering case
			try
				if (name of src) is not (name of dst) then set name of dst to (get name of src)
			on error msg number n
				my note("name", msg, n)
			end try
			try
				if (artist of src) is not (artist of dst) then set artist of dst to (get artist of src)
			on error msg number n
				my note("artist", msg, n)
			end try
			try
				if (album artist of src) is not (album artist of dst) then set album artist of dst to (get album artist of src)
			on error msg number n
				my note("album artist", msg, n)
			end try
			try
				if (album of src) is not (album of dst) then set album of dst to (get album of src)
			on error msg number n
				my note("album", msg, n)
			end try
			try
				if (composer of src) is not (composer of dst) then set composer of dst to (get composer of src)
			on error msg number n
				my note("composer", msg, n)
			end try
			try
				if (genre of src) is not (genre of dst) then set genre of dst to (get genre of src)
			on error msg number n
				my note("genre", msg, n)
			end try
			try
				if (grouping of src) is not (grouping of dst) then set grouping of dst to (get grouping of src)
			on error msg number n
				my note("grouping", msg, n)
			end try
			try
				if (comment of src) is not (comment of dst) then set comment of dst to (get comment of src)
			on error msg number n
				my note("comment", msg, n)
			end try
			try
				if (lyrics of src) is not (lyrics of dst) then set lyrics of dst to (get lyrics of src)
			on error msg number n
				my note("lyrics", msg, n)
			end try
			try
				if (sort name of src) is not (sort name of dst) then set sort name of dst to (get sort name of src)
			on error msg number n
				my note("sort name", msg, n)
			end try
			try
				if (sort artist of src) is not (sort artist of dst) then set sort artist of dst to (get sort artist of src)
			on error msg number n
				my note("sort artist", msg, n)
			end try
			try
				if (sort album artist of src) is not (sort album artist of dst) then set sort album artist of dst to (get sort album artist of src)
			on error msg number n
				my note("sort album artist", msg, n)
			end try
			try
				if (sort album of src) is not (sort album of dst) then set sort album of dst to (get sort album of src)
			on error msg number n
				my note("sort album", msg, n)
			end try
			try
				if (sort composer of src) is not (sort composer of dst) then set sort composer of dst to (get sort composer of src)
			on error msg number n
				my note("sort composer", msg, n)
			end try
		end considering
	end tell
end copyTexts

on copyNumbers(src, dst)
	tell application "iTunes"
		try
			if (year of src) is not (year of dst) then set year of dst to (get year of src)
		on error msg number n
			my note("year", msg, n)
		end try
		try
			if (track number of src) is not (track number of dst) then set track number of dst to (get track number of src)
		on error msg number n
			my note("track number", msg, n)
		end try
		try
			if (track count of src) is not (track count of dst) then set track count of dst to (get track count of src)
		on error msg number n
			my note("track count", msg, n)
		end try
		try
			if (disc number of src) is not (disc number of dst) then set disc number of dst to (get disc number of src)
		on error msg number n
			my note("disc number", msg, n)
		end try
		try
			if (disc count of src) is not (disc count of dst) then set disc count of dst to (get disc count of src)
		on error msg number n
			my note("disc count", msg, n)
		end try
		try
			if (bpm of src) is not (bpm of dst) then set bpm of dst to (get bpm of src)
		on error msg number n
			my note("bpm", msg, n)
		end try
		try
			if (compilation of src) is not (compilation of dst) then set compilation of dst to (get compilation of src)
		on error msg number n
			my note("compilation", msg, n)
		end try
		try
			-- Not one that the application worked out from the album, and not the lack of one.
			if ((rating kind of src) as text) is "user" and (rating of src) > 0 then
				if (rating of src) is not (rating of dst) then set rating of dst to (get rating of src)
			end if
		on error msg number n
			my note("rating", msg, n)
		end try
	end tell
end copyNumbers

on copyInfo(fromPid, toPid)
	with timeout of 60 seconds
		tell application "iTunes"
			set src to (first track of library playlist 1 whose persistent ID is fromPid)
			set dst to (first track of library playlist 1 whose persistent ID is toPid)
		end tell
		my copyTexts(src, dst)
		my copyNumbers(src, dst)
	end timeout
end copyInfo

on failureText()
	set joined to "error: not copied: " & (item 1 of failures)
	repeat with i from 2 to (count of failures)
		set joined to joined & ", " & (item i of failures)
	end repeat
	return joined
end failureText

try
	my copyInfo("%@", "%@")
on error msg number n
	if n is -1712 then return "error: timed out: " & msg
	return "error: " & msg
end try
if failures is not {} then return my failureText()
return
