// What the two kinds of users share.
#pragma once

#include "support/display/user.h"

#include <memory>

std::unique_ptr<X11User> makeX11User();
std::unique_ptr<User> makeWaylandUser();

// What a command writes on standard output. It throws when that fails.
std::string outputOf(const std::string &command);
