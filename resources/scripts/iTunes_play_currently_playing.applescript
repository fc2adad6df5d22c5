-- Answers the path of the track that is being played, or nothing.
set loc to missing value
try
	tell application "iTunes"
		if ((player state) as text) is not "stopped" and ((player state) as text) is not "paused" then
			set loc to (get location of current track)
		end if
	end tell
end try
if loc is missing value then return
return POSIX path of loc
