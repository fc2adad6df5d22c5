-- Has the application look at the file of a track again, and answers where it is now.
try
	with timeout of 60 seconds
		tell application "iTunes"
			set trk to (first file track of library playlist 1 whose persistent ID is "%@")
			try
				refresh trk
			on error msg number n
				-- A file that is gone shows in the location.
				if n is -1712 then error msg number n
			end try
			set loc to (get location of trk)
		end tell
	end timeout
	if loc is missing value then return "error: the file is missing"
	return POSIX path of loc
on error msg number n
	if n is -1712 then return "error: timed out: " & msg
	return "error: " & msg
end try
