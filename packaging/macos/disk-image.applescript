-- Lays out the disk image's window: the application on the left, the folder for it on the right, over the background.
-- Usage: osascript disk-image.applescript VOLUME
on run {volumeName}
	tell application "Finder"
		tell disk volumeName
			open
			set current view of container window to icon view
			set toolbar visible of container window to false
			set statusbar visible of container window to false
			set bounds of container window to {200, 160, 860, 560}
			set options to icon view options of container window
			set arrangement of options to not arranged
			set icon size of options to 128
			set text size of options to 13
			set background picture of options to file ".background:background.png"
			set position of item "Vorn.app" of container window to {170, 190}
			set position of item "Applications" of container window to {490, 190}
			update without registering applications
			delay 2 -- Finder saves the layout with a delay
			close
		end tell
	end tell
end run
