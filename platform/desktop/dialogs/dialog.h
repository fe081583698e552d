// A dialog: a window with controls that one works on until it is answered. Its loop of messages runs on the caller's
// thread; the windows that it disables are the caller's meanwhile.
#pragma once

#include "platform/desktop/dialogs/control.h"

#include <functional>
#include <string>
#include <vector>

namespace platform {

class Dialog : public Control {
 public:
  // What a dialog ends with whose choice counts; a WM_QUIT ends it with IDOK.
  static constexpr int kAccepted = 0x100;

  explicit Dialog(HWND handle) : Control(handle) {}

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override;
  // Makes the controls, gives the window its size, and chooses where the focus begins.
  virtual void build() = 0;
  // Whether it is shown; another one may stand on the screen for it.
  virtual bool isSeen() const { return true; }
  // The dialog is seen now.
  virtual void shown() {}
  void end(int result);

 protected:
  // Somebody wants something of the dialog: a control, a key, or a program. Whether it took it.
  virtual bool command(int id, int what) = 0;
  // Control and C were pressed where no control wants them. Whether it took that.
  virtual bool copy() { return false; }
  // The same of F1.
  virtual bool help() { return false; }
  // Which button Enter presses where the focus is on none.
  void setDefault(int id) { default_ = id; }
  int defaultButton() const { return default_; }
  void setFirst(HWND control) { focus_ = control; }

  HWND add(const char *kind, const std::string &text, DWORD style, const RECT &place, int id, DWORD exStyle = 0);
  HWND item(int id) const { return GetDlgItem(handle_, id); }
  // Gives the client area a size, in the middle of the screen.
  void setClientSize(LONG width, LONG height);

 private:
  friend struct Modal;

  void draw(HDC dc, const RECT &area) override;
  void activated(bool active);
  bool translate(const MSG &message);
  bool translateKey(const MSG &message);
  bool translateCharacter(const MSG &message);
  void press(HWND button);
  void pressDefault();
  void moveFocus(bool forward, bool inGroup);
  std::vector<HWND> stops() const;
  void markDefault();
  void sendCommand(int id);
  void loop();

  HWND focus_ = nullptr;  // of the dialog, while another window has it
  HWND marked_ = nullptr; // the button that looks like the default one
  int default_ = 0;
  bool ended_ = false;
  int result_ = IDOK; // also when a WM_QUIT ends the loop
  std::vector<HWND> disabled_;
};

struct DialogLook {
  std::string caption;
  DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;
  DWORD exStyle = WS_EX_DLGMODALFRAME;
};

using DialogMaker = std::function<std::shared_ptr<Dialog>(HWND)>;

// Whom a dialog keeps from working: its owner, or without one all windows of the thread, or nobody.
enum class Disables { owner, thread };

// Shows a dialog and runs it to its end. owner: any window of the caller's, or null. Result: what it was ended with; 0
// when it could not be made, or was destroyed.
int runDialog(HWND owner, Disables disables, const DialogLook &look, const DialogMaker &make);
// Makes a child of a dialog for an object that is no control of a class of its own.
HWND addPart(HWND dialog, const RECT &place, int id, DialogLook look,
             const std::function<std::shared_ptr<Control>(HWND)> &make);

// What CommDlgExtendedError tells this thread from now on; 0 for no error. Result: FALSE.
BOOL failDialog(DWORD error);

// Whether the desktop's own dialogs for files are to be used, which it may have.
bool usesDesktop();
// Whether nobody is there to answer dialogs, so that they answer themselves.
bool answersItself();

} // namespace platform
