#include "settings.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

std::string environment(const char *name) {
  std::array<char, MAX_PATH> value{};
  const DWORD length = GetEnvironmentVariableA(name, value.data(), value.size());
  return length < value.size() ? std::string(value.data(), length) : std::string();
}

// The user's folder for settings: of Windows, or by the XDG Base Directory Specification.
std::string settingsFolder() {
  for (const char *name : {"APPDATA", "XDG_CONFIG_HOME"})
    if (const std::string folder = environment(name); !folder.empty()) return folder + "\\levelview";
  return environment("HOME") + "\\.config\\levelview";
}

void open(WqCfg &cfg, const std::string &file) {
  WqCfg_Init(&cfg);
  std::array<char, MAX_PATH> folder{};
  const std::string full = fullName(file.empty() ? settingsFolder() + "\\levelview.ini" : file);
  if (full.size() >= folder.size()) return;
  WqDir_GetFromPath(full.c_str(), folder.data());
  WqCfg_SetDir(&cfg, folder.data());
  WqCfg_SetFileName(&cfg, full.c_str() + WqStr_Len(folder.data()) + 1);
  WqCfg_SetPath(&cfg);
}

// The debug window stores its edges as they are, and takes them as its last pixels: it would grow by one with each run.
void storeLastPixels(WqCfg &cfg) {
  std::array<char, MAX_PATH> text{};
  GetPrivateProfileStringA(cfg.sect, "DbgWnd", "", text.data(), text.size(), cfg.tmpPath);
  RECT place{};
  const std::string rest = WqScan_Rect(text.data(), &place);
  if (IsRectEmpty(&place)) return;
  --place.right;
  --place.bottom;
  const int32_t length = WqStr_Rect(text.data(), &place);
  std::snprintf(text.data() + length, text.size() - static_cast<size_t>(length), "%s", rest.c_str());
  WqCfg_Str(&cfg, "DbgWnd", text.data(), "", text.size());
}

// The debug window reads and writes its place itself. A run without one keeps what is there.
void exchangeDebugPlace(WqCfg &cfg, Settings &settings) {
  if (settings.debug) {
    WqDbgWnd_Config(&cfg);
    if (cfg.mode == WQ_CFG_WRITE_TMP) storeLastPixels(cfg);
    return;
  }
  WqCfg_Sect(&cfg, "StartUp");
  std::array<char, MAX_PATH> text{};
  WqStr_nCopy(text.data(), settings.debugPlace.c_str(), text.size() - 1);
  if (cfg.mode == WQ_CFG_READ || !settings.debugPlace.empty()) WqCfg_Str(&cfg, "DbgWnd", text.data(), "", text.size());
  settings.debugPlace = text.data();
}

// Reads or writes all settings, as the record says.
void exchange(WqCfg &cfg, Settings &settings) {
  WqCfg_Sect(&cfg, "View");
  std::array<char, MAX_PATH> text{};
  std::snprintf(text.data(), text.size(), "%.17g", settings.range);
  WqCfg_Str(&cfg, "Range", text.data(), "1", text.size());
  const double range = std::strtod(text.data(), nullptr);
  settings.range = range > 0 ? range : 1.0;
  WqStr_nCopy(text.data(), settings.lastFile.c_str(), text.size() - 1);
  WqCfg_Str(&cfg, "LastFile", text.data(), "", text.size());
  settings.lastFile = text.data();
  WqStr_nCopy(text.data(), settings.folder.c_str(), text.size() - 1);
  WqCfg_Str(&cfg, "Folder", text.data(), "", text.size());
  settings.folder = text.data();

  WqCfg_Sect(&cfg, "Window");
  WqStr_Rect(text.data(), &settings.place);
  WqCfg_Str(&cfg, "Place", text.data(), "0,0,0,0", text.size());
  WqScan_Rect(text.data(), &settings.place);
  settings.maximized = WqCfg_Int(&cfg, "Maximized", settings.maximized) != 0;
  exchangeDebugPlace(cfg, settings);
}

} // namespace

std::string fullName(const std::string &file) {
  std::string name = file;
  for (size_t at = 0; at < name.size(); ++at) {
    if (IsDBCSLeadByte(static_cast<BYTE>(name[at])))
      ++at;
    else if (name[at] == '/')
      name[at] = '\\';
  }
  std::array<char, MAX_PATH> current{};
  const DWORD length = GetCurrentDirectoryA(current.size(), current.data());
  if (length == 0 || length >= current.size() || (name.size() > 1 && name[1] == ':')) return name;
  if (name[0] == '\\') return std::string(current.data(), 2) + name; // on the current drive
  const bool root = current[length - 1] == '\\';
  return std::string(current.data(), length) + (root ? "" : "\\") + name;
}

std::string nameIn(const std::string &file) {
  const std::string path = fullName(file);
  std::array<char, MAX_PATH> folder{};
  const size_t length =
      path.size() < folder.size() ? static_cast<size_t>(WqDir_GetFromPath(path.c_str(), folder.data())) : 0;
  return length > 0 && length + 1 < path.size() ? path.substr(length + 1) : path;
}

std::string stemOf(const std::string &file) {
  const std::string name = nameIn(file), extension = extensionOf(name);
  return extension.empty() ? name : name.substr(0, name.size() - extension.size() - 1);
}

// A point is no second byte of a character.
std::string extensionOf(const std::string &file) {
  const size_t point = file.rfind('.');
  if (point == std::string::npos || file.find_first_of("/\\", point) != std::string::npos) return {};
  std::string extension = file.substr(point + 1);
  for (char &c : extension)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return extension;
}

void Settings::load(const std::string &file) {
  WqCfg cfg;
  open(cfg, file);
  exchange(cfg, *this);
}

bool Settings::save(const std::string &file) {
  WqCfg cfg;
  open(cfg, file);
  WqDir_Create(cfg.dir);
  if (!WqCfg_WriteTmp(&cfg)) return false; // no half measures: the old settings stay
  exchange(cfg, *this);
  const bool whole = cfg.mode == WQ_CFG_WRITE_TMP;
  WqCfg_WriteEnd(&cfg);
  return whole && WqCfg_IsExist(cfg.path) != 0;
}
