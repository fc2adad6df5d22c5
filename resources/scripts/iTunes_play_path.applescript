-- Plays a file: 1 if it plays.
try
	set f to ((POSIX file "%@") as alias)
	tell application "iTunes"
		play f
		repeat 10 times
			if ((player state) as text) is "playing" then return "1"
			delay 0.1
		end repeat
	end tell
end try
return "0"
