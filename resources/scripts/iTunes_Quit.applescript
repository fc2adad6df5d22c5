if application "iTunes" is running then tell application "iTunes" to quit
