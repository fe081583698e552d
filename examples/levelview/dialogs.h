// The dialogs that ask for a file. They begin in the folder that was used last, which the settings keep.
#pragma once

#include "settings.h"

#include <string>

// A recording to open. Result: its path; empty when the user gives up.
std::string askForRecording(Settings &settings);

// A name for a picture. name: of the recording, which the picture's begins with.
std::string askForPicture(Settings &settings, const std::string &name);
