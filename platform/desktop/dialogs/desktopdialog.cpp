#include "platform/desktop/dialogs/desktopdialog.h"

#include "platform/desktop/dialogs/filehook.h"
#include "platform/desktop/dialogs/itemids.h"
#include "platform/desktop/lock.h"
#include "platform/kernel/codepage.h"
#include "platform/kernel/paths.h"
#include "platform/winapi/boxes.h"

#include <mutex>

namespace platform {

namespace {

constexpr UINT kAnswered = WM_USER + 2; // from the screen's thread
constexpr UINT kFirstChange = 0x0468;   // the first of the messages by which programs change the platform's own dialog

class DesktopDialog : public Dialog {
 public:
  static constexpr int kUnable = kAccepted + 1;

  explicit DesktopDialog(HWND handle) : Dialog(handle) {}
  ~DesktopDialog() override { withdraw(); }

  void build() override {}
  bool isSeen() const override { return false; }
  void shown() override {
    if (begin())
      ask();
    else
      end(kUnable);
  }

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message != kAnswered) return Dialog::answer(message, wParam, lParam);
    withdraw();
    take(takeAnswer());
    return 0;
  }

 protected:
  // Lets the program begin. Result: whether the desktop's dialog will do.
  virtual bool begin() = 0;
  virtual FileQuestion question() const = 0;
  // Whether the choice counts; else the user is asked again.
  virtual bool takes(const FileAnswer &answer) = 0;

  HWND owner() const { return GetWindow(handle_, GW_OWNER); }

 private:
  // The answer comes on another thread, perhaps after the dialog has ended.
  struct Mail {
    std::mutex mutex;
    FileAnswer answer;
  };

  void ask() {
    const auto mail = std::make_shared<Mail>();
    const HWND window = handle_;
    mail_ = mail;
    withdraw_ = theScreen().askFiles(question(), [mail, window](const FileAnswer &answer) {
      {
        const std::lock_guard lock(mail->mutex);
        mail->answer = answer;
      }
      PostMessageA(window, kAnswered, 0, 0);
    });
    if (!withdraw_) end(kUnable);
  }

  void withdraw() {
    if (const auto withdraw = std::exchange(withdraw_, nullptr)) withdraw();
  }

  FileAnswer takeAnswer() const {
    const std::lock_guard lock(mail_->mutex);
    return std::move(mail_->answer);
  }

  void take(const FileAnswer &answer) {
    switch (answer.outcome) {
    case FileAnswer::Outcome::unable: return end(kUnable);
    case FileAnswer::Outcome::cancelled: return end(0);
    case FileAnswer::Outcome::chosen: break;
    }
    const bool taken = takes(answer);
    if (!recordOf(handle_)) return;
    taken ? end(kAccepted) : ask();
  }

  bool command(int id, int) override {
    if (id != IDCANCEL) return false;
    withdraw();
    end(0);
    return true;
  }

  std::shared_ptr<Mail> mail_;
  std::function<void()> withdraw_;
};

FileQuestion::Filter filterOf(const FileChoice::Filter &filter) {
  FileQuestion::Filter made{utf8FromCodePage(filter.text), {}};
  for (const std::string &pattern : patternsIn(filter.patterns)) made.patterns.push_back(utf8FromCodePage(pattern));
  return made;
}

class DesktopFiles final : public DesktopDialog {
 public:
  DesktopFiles(HWND handle, const FileChoice &choice)
      : DesktopDialog(handle), choice_(choice), folder_(choice.folder()), filter_(choice.firstFilter()) {}

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
    case CDM_GETSPEC: return handOut(path_.substr(lastPart(path_)), wParam, lParam);
    case CDM_GETFILEPATH: return handOut(path_, wParam, lParam);
    case CDM_GETFOLDERPATH: return handOut(folder_, wParam, lParam);
    default: break;
    }
    changes_ = changes_ || (message >= kFirstChange && message < kFirstChange + 8);
    return DesktopDialog::answer(message, wParam, lParam);
  }

 private:
  // A procedure of the program's may only listen; one that makes controls or changes some wants the layer's dialog.
  bool begin() override {
    hook_.open(handle_, choice_.record());
    hook_.tell(CDN_INITDONE);
    return recordOf(handle_) && !changes_ && !hook_.hasControls();
  }

  FileQuestion question() const override {
    FileQuestion question;
    question.kind = choice_.opens() ? FileQuestion::Kind::open : FileQuestion::Kind::save;
    question.several = choice_.opens() && choice_.has(OFN_ALLOWMULTISELECT) && choice_.has(OFN_EXPLORER);
    question.owner = owner();
    question.title = utf8FromCodePage(text());
    for (const FileChoice::Filter &filter : choice_.filters()) question.filters.push_back(filterOf(filter));
    question.filter = filter_;
    question.folder = nativePath(folder_);
    if (!choice_.opens()) question.name = utf8FromCodePage(choice_.name());
    return question;
  }

  bool takes(const FileAnswer &answer) override {
    std::vector<std::string> paths;
    if (answer.filter) filter_ = *answer.filter;
    for (const std::string &path : answer.paths) {
      paths.push_back(nameOfPath(path));
      if (!choice_.check(handle_, paths.back(), choice_.patternsOf(filter_), true)) return false;
    }
    path_ = paths[0];
    folder_ = folderOf(path_);
    if (const DWORD error = choice_.write(folder_, paths, filter_)) {
      failDialog(error);
      end(0);
      return true;
    }
    choice_.takeReadOnly(answer.readOnly);
    if (hook_.tell(CDN_FILEOK)) return false;
    choice_.finish(folder_);
    return true;
  }

  const FileChoice &choice_;
  std::string path_, folder_;
  size_t filter_;
  FileHook hook_;
  bool changes_ = false;
};

class DesktopFolders final : public DesktopDialog {
 public:
  DesktopFolders(HWND handle, const BROWSEINFOA &how) : DesktopDialog(handle), how_(how), path_(currentFolderName()) {}

  void build() override { caption_ = text(); }

  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
    case BFFM_SETSELECTIONA: select(wParam, lParam); return 0;
    case BFFM_ENABLEOK: enabled_ = lParam != 0; return 0;
    case BFFM_SETSTATUSTEXTA: return 0;
    default: return DesktopDialog::answer(message, wParam, lParam);
    }
  }

  const std::string &chosen() const { return path_; }

 private:
  void select(WPARAM isPath, LPARAM what) {
    const std::string path = isPath ? reinterpret_cast<LPCSTR>(what) : pathOf(reinterpret_cast<LPCITEMIDLIST>(what));
    if (const std::string folder = inFolder(currentFolderName(), path); !path.empty() && isFolder(folder))
      path_ = folder;
  }

  bool begin() override {
    if (how_.lpfn) callOut(how_.lpfn, handle_, BFFM_INITIALIZED, 0, how_.lParam);
    return recordOf(handle_) != nullptr;
  }

  // The prompt has no place of its own there.
  FileQuestion question() const override {
    FileQuestion question;
    question.kind = FileQuestion::Kind::folder;
    question.owner = owner();
    const bool prompts = text() == caption_ && how_.lpszTitle && *how_.lpszTitle;
    question.title = utf8FromCodePage(prompts ? how_.lpszTitle : text());
    question.folder = nativePath(path_);
    return question;
  }

  bool takes(const FileAnswer &answer) override {
    const std::string path = nameOfPath(answer.paths[0]);
    if (!isFolder(path)) return false;
    enabled_ = true;
    if (how_.lpfn) {
      const List list(listOf(path));
      callOut(how_.lpfn, handle_, BFFM_SELCHANGED, reinterpret_cast<LPARAM>(list.get()), how_.lParam);
    }
    if (!recordOf(handle_)) return false;
    if (enabled_) path_ = path;
    return enabled_;
  }

  const BROWSEINFOA how_;
  std::string caption_; // as it was before the program had its say
  std::string path_;
  bool enabled_ = true;
};

} // namespace

std::optional<BOOL> chooseOnDesktop(const FileChoice &choice, const DialogLook &look) {
  if (!usesDesktop() || choice.has(OFN_ENABLETEMPLATE | OFN_ENABLETEMPLATEHANDLE)) return std::nullopt;
  const int result = runDialog(choice.record().hwndOwner, Disables::owner, look,
                               [&](HWND window) { return std::make_shared<DesktopFiles>(window, choice); });
  if (result == DesktopDialog::kUnable) return std::nullopt;
  return result == Dialog::kAccepted;
}

std::optional<std::string> browseOnDesktop(const BROWSEINFOA &how, const DialogLook &look) {
  if (!usesDesktop() || how.pidlRoot) return std::nullopt;
  std::shared_ptr<DesktopFolders> dialog;
  const int result = runDialog(how.hwndOwner, Disables::owner, look,
                               [&](HWND window) { return dialog = std::make_shared<DesktopFolders>(window, how); });
  if (result == DesktopDialog::kUnable) return std::nullopt;
  return result == Dialog::kAccepted ? dialog->chosen() : "";
}

} // namespace platform
