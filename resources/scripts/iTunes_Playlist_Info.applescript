-- Lines, parted by returns, one for each playlist: name, persistent ID, the number of its special kind, "true"
-- if it is smart, and the persistent ID of the folder that it lies in.
on numberOfKind(kindName)
	set kindNames to {"Movies", "TV Shows", "Music", "Books", "Podcasts"} & ¬
		{"Purchased Music", "Party Shuffle", "Genius", "iTunes U"}
	set kindNumbers to {"2", "3", "4", "5", "10"} & {"19", "22", "26", "31"}
	repeat with i from 1 to (count of kindNames)
		if (item i of kindNames) is kindName then return item i of kindNumbers
	end repeat
	return ""
end numberOfKind

on replaceText(t, oldText, newText)
	set oldDelimiters to AppleScript's text item delimiters
	set AppleScript's text item delimiters to oldText
	set parts to text items of t
	set AppleScript's text item delimiters to newText
	set t to parts as text
	set AppleScript's text item delimiters to oldDelimiters
	return t
end replaceText

-- A name that holds no mark between fields or lines.
on plainName(plName)
	return my replaceText(my replaceText(plName, "|@", "/@"), return, " ")
end plainName

on lineOf(pl)
	set isSmart to ""
	set folderPid to ""
	tell application "iTunes"
		set plName to (get name of pl)
		set plPid to (get persistent ID of pl)
		set kindName to ((special kind of pl) as text)
		try
			if (smart of pl) then set isSmart to "true"
		end try
		try
			set folderPid to (get persistent ID of (get parent of pl))
		end try
	end tell
	return my plainName(plName) & "|@" & plPid & "|@" & my numberOfKind(kindName) & "|@" & isSmart & "|@" & folderPid
end lineOf

set joined to ""
tell application "iTunes" to set pls to (get every playlist of source 1)
repeat with i from 1 to (count of pls)
	if i > 1 then set joined to joined & return
	set joined to joined & my lineOf(item i of pls)
end repeat
return joined
