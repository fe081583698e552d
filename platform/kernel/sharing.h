// Share modes, between the openers of a file in this process and in others.
#pragma once

#include "platform/winapi.h"

namespace platform {

// Claims an opened file with an access and a share mode, for as long as its description stays open.
// Result: whether the claim agrees with those of all other openers; if not, nothing is claimed.
bool claim(int file, DWORD access, DWORD share);

// Claims a file for a profile's call, which reads it and perhaps writes it. Openers that forbid that oppose it, and it
// opposes them; calls on profiles never oppose each other.
bool claimForProfile(int file, bool writes);

// Whether somebody else, other than a profile's call, has the file open for reading or writing, or mapped.
bool isOpenElsewhere(int file);

// Gives up what a claim has beyond an access, which need not read or write.
void narrowClaim(int file, DWORD access);

// Whether no opener keeps the file from being read.
bool isReadable(int file);

// Whether no opener keeps the file from being deleted or moved.
bool isDeletable(int file);

// Marks a file as mapped, for as long as the description stays open; and whether another description is so marked.
void markMapped(int file);
bool isMapped(int file);

} // namespace platform
