// A function of the controls' floor that windows need.
#pragma once

namespace platform::above {

// Registers the classes that every program finds. Called once, under the desktop's lock.
void registerSystemClasses();

} // namespace platform::above
