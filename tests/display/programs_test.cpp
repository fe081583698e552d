// Whole programs: without a desktop, at large scales, with Qt of their own, and the ways in which they end.

#include "display.h"

#include <algorithm>
#include <cstdlib>
#include <future>

namespace {

long lines(const std::string &text) { return std::count(text.begin(), text.end(), '\n'); }

// Several of a program side by side: what takes time is mostly waiting.
std::vector<Ended> endAtOnce(const std::string &command, int count) {
  std::vector<std::future<Ended>> running;
  for (int i = 0; i < count; ++i)
    running.push_back(std::async(std::launch::async, [&] { return runCommand(command); }));
  std::vector<Ended> all;
  for (std::future<Ended> &one : running) all.push_back(one.get());
  return all;
}

} // namespace

// What the environment names isn't there: one line tells, and the program works unseen.
TEST_F(AnyDesktop, WithoutADesktopProgramsWorkUnseen) {
  const std::string bare = "env -u DISPLAY -u WAYLAND_DISPLAY ";
  // the program in a folder where Qt finds all of its plugins but those for Wayland
  const std::string without = "rm -rf plain && mkdir -p plain/plugins/platforms && ln -f visitor plain/ && "
                              "printf '[Paths]\\nPlugins=plugins\\n' >plain/qt.conf && ln -s '" +
                              pluginFolder() + "'/platforms/libq[ox]*.so plain/plugins/platforms && " + bare +
                              "XDG_RUNTIME_DIR=$XDG_RUNTIME_DIR WAYLAND_DISPLAY=" +
                              (std::getenv("WAYLAND_DISPLAY") ? std::getenv("WAYLAND_DISPLAY") : "wayland-7") +
                              " plain/visitor";
  const struct {
    const char *name;
    std::string command;
    int lines; // on standard error
  } rows[] = {{"nothing set", bare + "./visitor", 0},
              {"no such X server", bare + "DISPLAY=:4711 ./visitor", 1},
              {"no such host", bare + "DISPLAY=none.invalid:0 ./visitor", 1},
              {"no such compositor", bare + "XDG_RUNTIME_DIR=/tmp WAYLAND_DISPLAY=wayland-4711 ./visitor", 1},
              {"neither", bare + "DISPLAY=:4711 XDG_RUNTIME_DIR=/tmp WAYLAND_DISPLAY=wayland-4711 ./visitor", 1},
              {"no plugin for Wayland", without, 1},
              {"as the user wants it", bare + "DISPLAY=:4711 QT_QPA_PLATFORM=offscreen ./visitor", 0}};
  for (const auto &row : rows) {
    SCOPED_TRACE(row.name);
    const Ended ended = runCommand(row.command + " unseen 100 100 300 200 once");
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(lines(ended.err), row.lines) << ended.err;
    EXPECT_EQ(
        ended.out.substr(0, ended.out.find('\n', ended.out.find("client"))).find("client 300x200 screen 1280x1024"),
        ended.out.find("client"))
        << ended.out;
  }
}

TEST_F(AnyDesktop, WhoAsksFirstDoesNotMatter) {
  Beside program("./visitor visitor 600 400 300 200 worker");
  EXPECT_NE(program.line("width 1280"), "");
  EXPECT_TRUE(until([] { return user().window("visitor").id != 0; }));
  const Place place = there("visitor");
  user().click(place.x + 100, place.y + 60);
  EXPECT_EQ(program.line("press"), "press 100,60");
  user().wish(user().window("visitor"), User::Wish::close);
  EXPECT_EQ(program.end(), 0);
}

// At twice the usual resolution a program gets pixels twice as large, unless it says that it draws for any resolution.
TEST_F(AnyDesktop, LargeScales) {
  const bool wayland = session() == Session::sway;
  const std::string large = wayland ? "1280x800" : "1280x1024", small = wayland ? "640x400" : "640x512";
  const struct {
    const char *variable;
    int scale; // of the desktop
    const char *word;
    int zoom; // of the window
    std::string told;
  } rows[] = {{"QT_SCALE_FACTOR=1", 1, "", 1, "client 300x200 screen " + large + " resolution 96"},
              {"QT_SCALE_FACTOR=1", 1, "aware", 1, "client 300x200 screen " + large + " resolution 96"},
              {"QT_SCALE_FACTOR=2", 1, "", 2, "client 300x200 screen " + small + " resolution 96"},
              {"QT_SCALE_FACTOR=2", 1, "aware", 1, "client 300x200 screen " + large + " resolution 192"},
              {"QT_SCALE_FACTOR=1", 2, "", 2, "client 300x200 screen " + small + " resolution 96"},
              {"QT_SCALE_FACTOR=1", 2, "aware", 1, "client 300x200 screen " + large + " resolution 192"}};
  for (const auto &row : rows) {
    SCOPED_TRACE(std::string(row.variable) + " on a desktop of scale " + std::to_string(row.scale) + " " + row.word);
    user().scale(row.scale);
    Beside program(std::string("env ") + row.variable + " ./visitor visitor 40 60 300 200 " + row.word);
    EXPECT_EQ(program.line("client"), row.told);
    EXPECT_TRUE(until([] { return user().window("visitor").id != 0; }));
    const auto width = [] { return there("visitor").width; };
    EXPECT_TRUE(until([&] { return width() == 300 * row.zoom; })) << width();
    std::string seen, expected;
    for (int x = 0; x < 20; ++x) expected += (10 + x / row.zoom) % 2 == 0 ? '.' : '#';
    until([&] {
      const Place place = there("visitor");
      const Picture picture = user().picture();
      seen.clear();
      for (int x = 0; x < 20; ++x) {
        const COLORREF pixel = picture.at(place.x + 10 * row.zoom + x, place.y + 20 * row.zoom);
        seen += pixel == RGB(0, 0, 0) ? '.' : pixel == RGB(255, 255, 255) ? '#' : '?';
      }
      return seen == expected;
    });
    EXPECT_EQ(seen, expected);
    const Place place = there("visitor");
    user().click(place.x + 100, place.y + 80);
    EXPECT_EQ(program.line("press"), "press " + std::to_string(100 / row.zoom) + ',' + std::to_string(80 / row.zoom));
    user().wish(user().window("visitor"), User::Wish::close);
    EXPECT_EQ(program.end(), 0);
  }
  user().scale(1);
}

TEST_F(AnyDesktop, AProgramWithQtOfItsOwnIsJoined) {
  for (const std::string way : {"exec", "pump"}) {
    SCOPED_TRACE(way);
    Beside program("./guest " + way);
    for (const char *title : {"guest", "own"}) // Qt works as well
      EXPECT_TRUE(until([&] { return user().window(title).id != 0; })) << title;
    apart("guest", "own");
    settle();
    const Place place = there("guest");
    EXPECT_EQ(place.width, 300);
    user().click(place.x + 50, place.y + 60);
    EXPECT_EQ(program.line("press"), "press 50,60");
    user().wish(user().window("guest"), User::Wish::close);
    EXPECT_EQ(program.end(), 0);
  }
  const Ended ended = runCommand("./guest quit");
  EXPECT_EQ(ended.status, 0) << ended.err;
}

// Two applications of Qt in one program can't be: it says so, instead of waiting for ever.
TEST_F(AnyDesktop, QtOfItsOwnCannotComeLater) {
  const Ended ended = runCommand("./guest late", 5);
  EXPECT_TRUE(ended.inTime);
  EXPECT_GT(ended.status, 0);
  EXPECT_LT(ended.status, 124);
  EXPECT_NE(ended.err.find("guest: "), std::string::npos) << ended.err;
  EXPECT_EQ(ended.out, "the window is there\n");
}

// WQ_END_RUNS says how often each way is tried.
TEST_F(AnyDesktop, ProgramsEndWell) {
  const char *wanted = std::getenv("WQ_END_RUNS");
  const int runs = wanted ? std::atoi(wanted) : 5;
  ASSERT_GT(runs, 0);
  constexpr int kAtOnce = 5, kNoSession = 125;
  const std::string own = sessionScript() + (session() == Session::sway ? " sway " : " bare ");
  const struct {
    const char *way;
    int status; // -1: any but that of a crash
  } rows[] = {{"return", 0}, {"exit", 3},    {"procedure", 3},    {"worker", 3},     {"window", 3},
              {"box", 3},    {"server", -1}, {"child-return", 0}, {"child-exit", 0}, {"child-_exit", 0}};
  for (const auto &[way, status] : rows) {
    const bool kills = status < 0;
    int late = 0, crashed = 0, other = 0;
    std::string told;
    for (int run = 0; run < runs; run += kAtOnce)
      for (const Ended &ended : endAtOnce((kills ? own : "exec ") + "./ender " + way, std::min(kAtOnce, runs - run))) {
        const bool crash = ended.inTime && ended.status > 128;
        late += !ended.inTime;
        crashed += crash;
        other += ended.inTime && !crash && (kills ? ended.status == kNoSession : ended.status != status);
        told += ' ' + std::to_string(ended.status) + (ended.inTime && !crash ? "" : '\n' + ended.err);
      }
    SCOPED_TRACE(std::string(way) + ", with the statuses" + told);
    EXPECT_EQ(late, 0) << "hang";
    EXPECT_EQ(crashed, 0) << "crash";
    EXPECT_EQ(other, 0) << "end with another status";
  }
}
