#include "objects.h"
#include "support/boxes.h"

class MsgBoxTest : public ObjectTest {
 protected:
  void SetUp() override {
    ObjectTest::SetUp();
    wqMain.instance = GetModuleHandleA(nullptr);
    wqMain.mainWnd = made(nullptr, {0, 0, 200, 100}).hwnd;
    SetWindowTextA(wqMain.mainWnd, "The program");
  }
  // What the box that is shown says, with the style of its default button, and "owned" for that of the main window.
  template <typename Show> std::string seen(Show show) {
    std::string seen;
    const Answerer answerer({[&](HWND box) {
      seen = textOf(box) + "|" + textOf(GetDlgItem(box, 0xFFFF)) + "|" + std::to_string(GetDlgCtrlID(GetFocus())) +
             (GetWindow(box, GW_OWNER) == wqMain.mainWnd ? "|owned" : "");
      PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(GetDlgCtrlID(GetFocus())), 0);
    }});
    seen += "|" + std::to_string(show());
    return seen;
  }
  const KeepsDialogs kept_;
};

TEST_F(MsgBoxTest, CaptionsFallBackOnTheMainWindowsTitle) {
  EXPECT_EQ(seen([] { return WqMsgBox_Show("text", "caption", MB_YESNO | MB_DEFBUTTON2); }), "caption|text|7|owned|7");
  EXPECT_EQ(seen([] { return WqMsgBox_Show("text", nullptr, MB_OK); }), "The program|text|1|owned|1");
  EXPECT_EQ(seen([] { return WqMsgBox_Show("text", "", MB_OK); }), "|text|1|owned|1") << "an empty one is one";
  SetWindowTextA(wqMain.mainWnd, std::string(300, 't').c_str());
  EXPECT_EQ(seen([] { return WqMsgBox_Show("text", nullptr, MB_OK); }), std::string(255, 't') + "|text|1|owned|1");
  SetWindowTextA(wqMain.mainWnd, "");
  EXPECT_EQ(seen([] { return WqMsgBox_Show("text", nullptr, MB_OK); }),
            "\x83\x41\x83\x76\x83\x8A\x83\x50\x81\x5B\x83\x56\x83\x87\x83\x93\x83\x81\x83\x62\x83\x5A\x81\x5B\x83\x57"
            "|text|1|owned|1");
}

TEST_F(MsgBoxTest, TextsComeFromTheResources) {
  EXPECT_EQ(seen([] { return WqMsgBox_ShowFromID(7, "caption", MB_OKCANCEL | MB_DEFBUTTON2); }),
            "caption|from the table|2|owned|2");
  EXPECT_EQ(seen([] { return WqMsgBox_Information(7, nullptr); }), "The program|from the table|1|owned|1");
  EXPECT_EQ(seen([] { return WqMsgBox_FatalError(7, "caption"); }), "caption|from the table|1|owned|1");
}
