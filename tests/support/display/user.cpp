#include "support/display/private.h"

#include <QLibraryInfo>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <unistd.h>

std::ostream &operator<<(std::ostream &out, const Place &place) {
  return out << place.x << ',' << place.y << ' ' << place.width << 'x' << place.height;
}

uint32_t Picture::at(int x, int y) const {
  if (x < 0 || y < 0 || x >= width || y >= height) return 0;
  return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
}

Place Picture::box(uint32_t colour) const {
  int left = width, top = height, right = 0, bottom = 0;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      if (at(x, y) != colour) continue;
      left = std::min(left, x), right = std::max(right, x + 1);
      top = std::min(top, y), bottom = std::max(bottom, y + 1);
    }
  return right > left ? Place{left, top, right - left, bottom - top} : Place{};
}

void User::click(int x, int y, int number) {
  point(x, y);
  button(number, true);
  button(number, false);
}

void User::type(const std::string &name) {
  key(name, true);
  key(name, false);
}

Shown User::window(const std::string &title) {
  for (const Shown &window : windows())
    if (window.title == title) return window;
  return {};
}

Session session() {
  const char *name = std::getenv("WQ_SESSION");
  const std::string kind = name ? name : "";
  if (kind == "openbox") return Session::openbox;
  if (kind == "bare") return Session::bare;
  if (kind == "sway") return Session::sway;
  if (kind == "weston") return Session::weston;
  throw std::runtime_error("these tests run in a session, see ./test x11 and ./test wayland");
}

X11User &x11User() {
  static const std::unique_ptr<X11User> one = makeX11User();
  return *one;
}

// On weston the person sits at the X server that shows it.
User &user() {
  if (session() != Session::sway) return x11User();
  static const std::unique_ptr<User> one = makeWaylandUser();
  return *one;
}

std::string outputOf(const std::string &command) {
  FILE *pipe = popen(command.c_str(), "r");
  if (!pipe) throw std::runtime_error(command + " can't be started");
  std::string all;
  char part[1 << 16];
  for (size_t count = 0; (count = std::fread(part, 1, sizeof part, pipe)) > 0;) all.append(part, count);
  if (pclose(pipe) != 0) throw std::runtime_error(command + " failed");
  return all;
}

std::string programFolder() {
  char path[4096];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  const std::string name(path, length > 0 ? static_cast<size_t>(length) : 0);
  return name.substr(0, name.rfind('/'));
}

std::string pluginFolder() { return QLibraryInfo::path(QLibraryInfo::PluginsPath).toStdString(); }
