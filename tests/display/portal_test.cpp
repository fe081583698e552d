// The desktop's own dialogs for files, which a service on the bus of the session shows. A program asks on a bus of its
// own, where a service stands for that of a desktop.

#include "display.h"

#include "support/files.h"

#include <filesystem>

namespace {

class DesktopDialogs : public DisplayTest {
 protected:
  void SetUp() override {
    DisplayTest::SetUp();
    for (const char *name : {"a.wav", "日本.wav", "é한.wav", "taken.dat"}) writeFile(temp_.file(name), "x");
    path_ = std::filesystem::absolute(temp_.path()).string();
  }

  // What the service and the program tell, line by line. URIs in the title begin with "$", which stands for the folder.
  std::string ask(const std::string &kind, std::string title, bool inFolder = false) {
    for (size_t at; (at = title.find('$')) != std::string::npos;) title.replace(at, 1, "file://" + path_);
    std::string command = "dbus-run-session -- ./portal ./asker " + kind + " '" + title + "'";
    if (inFolder) command += " '" + path_ + "'";
    const Ended ended = runCommand(command);
    EXPECT_TRUE(ended.inTime) << command;
    std::string all = ended.out;
    for (const std::string &part : {"file://" + path_, named(), path_})
      for (size_t at; (at = all.find(part)) != std::string::npos;) all.replace(at, part.size(), "$");
    return all;
  }
  // The folder as the program has it.
  std::string named() const {
    std::string name = "C:" + path_;
    std::replace(name.begin(), name.end(), '/', '\\');
    return name;
  }
  // Each of these lines, in this order.
  static void expectLines(const std::string &told, const std::vector<std::string> &lines) {
    size_t from = 0;
    for (const std::string &line : lines) {
      const size_t at = ("\n" + told).find("\n" + line + "\n", from);
      EXPECT_NE(at, std::string::npos) << line << "\nis not told, or not there:\n" << told;
      if (at != std::string::npos) from = at + line.size();
    }
  }

  const TempFolder temp_;
  std::string path_;
};

} // namespace

TEST_F(DesktopDialogs, IsAskedForWhatTheProgramWants) {
  expectLines(ask("open", "cancel", true), {"unseen, owned cancel", "done 0 0 "});
  expectLines(ask("open", "cancel", true), {"OpenFile parent x11:", "current_filter All(*)", "current_folder $",
                                            "filters Wave(*.[wW][aA][vV];*.[aA][iI][fF])|All(*)", "modal true"});
  expectLines(ask("save", "cancel", true), {"SaveFile parent x11:", "current_name given.wav"});
  expectLines(ask("several", "cancel"), {"multiple true"});
  expectLines(ask("folder", "cancel"), {"OpenFile parent x11:", "directory true"});
}

TEST_F(DesktopDialogs, WhatIsChosenComesInTheProgramsForm) {
  const std::string japanese = "\x93\xFA\x96\x7B"; // in code page 932
  const struct {
    const char *kind, *title;
    std::vector<std::string> lines;
  } cases[] = {{"open", "$/a.wav", {"done 1 0 $\\a.wav", "opened"}},
               {"open", "$/a.wav @1", {"done 1 0 $\\a.wav"}},
               {"open", "$/%E6%97%A5%E6%9C%AC.wav", {"done 1 0 $\\" + japanese + ".wav", "opened"}},
               {"open", "$/%C3%A9%ED%95%9C.wav", {"opened"}},
               {"several", "$/a.wav $/taken.dat", {"done 1 0 $|a.wav|taken.dat"}},
               {"several", "$/a.wav", {"done 1 0 $\\a.wav"}},
               {"save", "$/new.wav", {"done 1 0 $\\new.wav"}},
               {"save", "$/new", {"done 1 0 $\\new.dat"}},
               {"small", "$/a.wav", {"done 0 " + std::to_string(FNERR_BUFFERTOOSMALL) + " "}},
               {"folder", "$", {"done 1 0 $"}},
               {"open", "mtp://camera/a.wav", {"unseen, owned mtp://camera/a.wav", "seen, owned mtp://camera/a.wav"}}};
  for (const auto &one : cases) {
    SCOPED_TRACE(std::string(one.kind) + " " + one.title);
    expectLines(ask(one.kind, one.title, std::string(one.kind) == "save"), one.lines);
  }
}

// The user has agreed to another name than the one with the extension: the question is the program's.
TEST_F(DesktopDialogs, AFileThatTheUserHasNotSeenIsNotReplacedUnasked) {
  expectLines(ask("save", "$/taken", true),
              {"seen, owned $/taken", "SaveFile parent x11:", "seen, owned $/taken", "done 1 0 $\\taken.dat"});
}

TEST_F(DesktopDialogs, HooksAndCallbacksAreServedAsFarAsTheyListen) {
  expectLines(ask("listen", "$/a.wav"), {"hook begins", "hook hears a.wav", "hook hears a.wav", "done 1 0 $\\a.wav"});
  expectLines(ask("change", "cancel"), {"hook begins", "seen, owned cancel", "done 0 0 "});
  EXPECT_EQ(ask("change", "cancel").find("OpenFile"), std::string::npos) << "asked in spite of the hook's controls";
  expectLines(ask("folder", "$", true), {"current_folder $", "callback hears $", "done 1 0 $"});
}

TEST_F(DesktopDialogs, TheProgramCanCancelAndEndIt) {
  expectLines(ask("cancel", "wait"), {"unseen, owned wait", "done 0 0 "});
  expectLines(ask("cancel", "wait"), {"closed"});
  expectLines(ask("quit", "wait"), {"done 0 0 "});
}

TEST_F(DesktopDialogs, WhereItFailsTheLayersOwnDialogComes) {
  for (const char *failure : {"silent", "refuse", "die", "fail"}) {
    SCOPED_TRACE(failure);
    const std::string own = std::string("seen, owned ") + failure;
    const std::string told = ask("open", failure);
    expectLines(told, {own, "done 0 0 "});
    if (failure == std::string("silent")) {
      EXPECT_NE(told.find("closed"), std::string::npos) << "it may still come";
    }
    expectLines(ask("folder", failure), {"done 0 0 "});
  }
  const Ended without = runCommand("dbus-run-session -- ./asker open 'no service'");
  expectLines(without.out, {"seen, owned no service", "done 0 0 "});
}
