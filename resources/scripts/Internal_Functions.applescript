on libTrack(pid)
	tell application "iTunes"
		return (first track of library playlist 1 whose persistent ID is pid)
	end tell
end libTrack
