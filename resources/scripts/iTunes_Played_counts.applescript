-- Answers the plays and skips of two tracks: four numbers with commas between them. An error begins with
-- "error: no such track" where the library does not have one of them.
try
	with timeout of 60 seconds
		tell application "iTunes"
			set src to (first track of library playlist 1 whose persistent ID is "%@")
			set dst to (first track of library playlist 1 whose persistent ID is "%@")
			set srcCounts to ((played count of src) as text) & "," & ((skipped count of src) as text)
			return srcCounts & "," & ((played count of dst) as text) & "," & ((skipped count of dst) as text)
		end tell
	end timeout
on error msg number n
	if n is -1712 then return "error: timed out: " & msg
	if n is -1728 then return "error: no such track: " & msg
	return "error: " & msg
end try
