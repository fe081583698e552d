// Names of files as dialogs take them from the user and give them to the program. All in code page 932.
#pragma once

#include "platform/desktop/dialogs/itemlist.h"
#include "platform/winapi/dialogs.h"

#include <string>
#include <vector>

namespace platform {

// The names in a text: each in quotes, or the whole text. separated: blanks part names without quotes too.
std::vector<std::string> namesIn(const std::string &text, bool separated);
// A name in a folder, as "C:\a\b", without "." and ".." in it. folder: such a path, or empty for the drives.
std::string inFolder(const std::string &folder, const std::string &name);
// The folder of a path; empty for a root, whose folder is that of all drives.
std::string folderOf(const std::string &path);
// Where the last part begins.
size_t lastPart(const std::string &path);
// Where the extension begins, behind its point; 0 without one.
size_t extensionOf(const std::string &path);
bool isFolder(const std::string &path);
bool exists(const std::string &path);
// Whether a file can have this name.
bool isName(const std::string &path);
bool isPattern(const std::string &name);
std::string currentFolderName();

// The patterns of "*.wav;*.aif".
std::vector<std::string> patternsIn(const std::string &patterns);
// What a folder holds: its folders first, then the files that match one of the patterns, if there are any; hidden ones
// are left out. Of the empty folder they are the drives.
std::vector<ItemList::Item> listFolder(const std::string &folder, const std::vector<std::string> &patterns);

} // namespace platform
