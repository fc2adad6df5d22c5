-- Sets a text of a track, which comes as the digits of its UTF-16 behind a byte-order mark: 1 if it is done.
on hexNumber(pair)
	set high to (offset of (character 1 of pair) in "0123456789ABCDEF") - 1
	return high * 16 + (offset of (character 2 of pair) in "0123456789ABCDEF") - 1
end hexNumber

on unitAt(h, i, isBig)
	set low to text i thru (i + 1) of h
	set high to text (i + 2) thru (i + 3) of h
	if isBig then set {low, high} to {high, low}
	if high is "00" then return my hexNumber(low)
	return (my hexNumber(high)) * 256 + (my hexNumber(low))
end unitAt

on textFromHex(h)
	set isBig to (text 1 thru 4 of h) is "FEFF"
	set codes to {}
	set i to 5
	repeat while i + 3 ≤ (length of h)
		set u to my unitAt(h, i, isBig)
		set i to i + 4
		if u ≥ 55296 and u ≤ 56319 and i + 3 ≤ (length of h) then
			set low to my unitAt(h, i, isBig)
			if low ≥ 56320 and low ≤ 57343 then
				set u to 65536 + (u - 55296) * 1024 + low - 56320
				set i to i + 4
			end if
		end if
		set end of codes to u
	end repeat
	if codes is {} then return ""
	return (string id codes)
end textFromHex

on rename(pid, h)
	set v to my textFromHex(h)
	with timeout of 60 seconds
		tell application "iTunes"
			set trk to (first track of library playlist 1 whose persistent ID is pid)
			considering case
				if "%3$@" is "Artist" then
					if (artist of trk) is not v then set artist of trk to v
					set nowThere to (artist of trk)
				else if "%4$@" is "Album" then
					if (album of trk) is not v then set album of trk to v
					set nowThere to (album of trk)
				else if "%5$@" is "Album Artist" then
					if (album artist of trk) is not v then set album artist of trk to v
					set nowThere to (album artist of trk)
				else
					error "a track's %6$@ cannot be changed"
				end if
				if nowThere is not v then error "the application did not take the text"
			end considering
		end tell
	end timeout
end rename

try
	my rename("%1$@", "%2$@")
	return "1"
on error msg number n
	if n is -1712 then return "error: timed out: " & msg
	return "error: " & msg
end try
