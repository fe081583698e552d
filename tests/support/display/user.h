// The person at the screen, and what the desktop tells and does besides: for tests of windows on a live display. Which
// desktop that is, the session says in which the test runs (see session). What goes wrong with the desktop itself
// throws
// std::runtime_error.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

// In pixels of the screen.
struct Place {
  int x = 0, y = 0, width = 0, height = 0;
  bool operator==(const Place &) const = default;
};
std::ostream &operator<<(std::ostream &out, const Place &place);

// A window as the desktop has it.
struct Shown {
  uintptr_t id = 0;    // 0: there is no such window
  std::string title;   // UTF-8
  std::string program; // by which a dock groups windows: the class of X11, the app id of Wayland
  Place client;
  bool active = false;
  bool minimised = false, maximised = false, above = false; // above: kept over other windows
  double opacity = 1;
};

// What is to be seen on the screen.
struct Picture {
  int width = 0, height = 0;
  std::vector<uint32_t> pixels;     // as COLORREF has them, row by row
  uint32_t at(int x, int y) const;  // 0 beyond the edges
  Place box(uint32_t colour) const; // round all pixels of a colour
};

class User {
 public:
  virtual ~User() = default;
  User(const User &) = delete;
  User &operator=(const User &) = delete;

  // What a hand does. When these return the desktop has taken it; the program learns of it later.
  virtual void point(int x, int y) = 0;
  virtual void button(int number, bool down) = 0;           // 1 left, 2 middle, 3 right
  virtual void wheel(int notches) = 0;                      // toward the user is positive
  virtual void key(const std::string &name, bool down) = 0; // "a", "Escape", "Shift_L"
  void click(int x, int y, int number = 1);
  void type(const std::string &name);

  // What an eye sees.
  virtual std::vector<Shown> windows() = 0; // from the bottom to the top
  Shown window(const std::string &title);
  virtual Picture picture() = 0;

  // What a window manager does with a window, on behalf of its user.
  enum class Wish { activate, close, minimise, maximise, restore };
  virtual void wish(const Shown &window, Wish wish) = 0;
  virtual void place(const Shown &window, const Place &client) = 0;

  // Large pixels for all programs that start from now on: a multiple of the usual resolution.
  virtual void scale(int factor) = 0;

 protected:
  User() = default;
};

// What only X11 has.
class X11User : public User {
 public:
  // A window of another client above all others.
  virtual void cover(const Place &place) = 0;
  virtual void uncover() = 0;
  virtual bool answersPing(const Shown &window) = 0;
  struct Icon {
    int width, height;
    std::vector<uint32_t> pixels; // alpha, red, green, blue from the highest byte
  };
  virtual std::vector<Icon> icons(const Shown &window) = 0;
};

enum class Session { openbox, bare, sway, weston };
Session session();

User &user();
X11User &x11User();

// Where this program and those beside it lie, and the plugins of Qt.
std::string programFolder();
std::string pluginFolder();
