// Share modes, between the openers of a file in this process and in others.
#pragma once

#include "platform/winapi.h"

namespace platform {

// Claims an open file for an access and a share mode, for as long as its description stays open.
// Result: whether the claim agrees with those of all other openers; if not, nothing is claimed.
bool claim(int file, DWORD access, DWORD share);

// Claims a file for a profile function, which reads it and perhaps writes it. The claim fails if another opener forbids
// this access. Later openers that forbid it fail too. Profile functions never oppose each other.
bool claimForProfile(int file, bool writes);

// Whether another opener, except profile functions, has the file open for reading or writing, or mapped.
bool isOpenElsewhere(int file);

// Reduces a claim to an access, which may include neither reading nor writing.
void narrowClaim(int file, DWORD access);

// Whether no opener keeps the file from being read.
bool isReadable(int file);

// Whether no opener keeps the file from being deleted or moved.
bool isDeletable(int file);

// Marks a file as mapped, for as long as the description stays open.
void markMapped(int file);
bool isMapped(int file);

} // namespace platform
