// What windows ask of the floor above them, which defines it.
#pragma once

namespace platform::above {

// Registers the classes that are there without being asked for. Under the desktop's lock, once.
void registerSystemClasses();

} // namespace platform::above
