// Settings in a private profile, read or written by the same calls.

#include "files/files.h"

#include "files/files_private.h"
#include "text/text.h"

namespace {

bool isProtected(const WqCfg *cfg) { return cfg->mode == WQ_CFG_WRITE_TMP || cfg->mode == WQ_CFG_WRITE_TMP_FAILED; }

BOOL writeText(WqCfg *cfg, const char *key, const char *text) {
  const BOOL written = WritePrivateProfileStringA(cfg->sect, key, text, isProtected(cfg) ? cfg->tmpPath : cfg->path);
  if (!written && isProtected(cfg)) cfg->mode = WQ_CFG_WRITE_TMP_FAILED;
  return written;
}

// Makes an empty temporary file, or empties an existing one.
bool makeEmptyFile(const char *path) {
  const HANDLE file = CreateFileA(path, GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  SetEndOfFile(file);
  CloseHandle(file);
  return true;
}

} // namespace

void WqCfg_Init(WqCfg *cfg) { WqMem_Zero(cfg, sizeof *cfg); }

void WqCfg_Term(WqCfg *cfg) { WqCfg_Init(cfg); }

void WqCfg_Path(WqCfg *cfg, const char *path) { wqCopyFitting(cfg->path, path); }

void WqCfg_SetDir(WqCfg *cfg, const char *dir) { wqCopyFitting(cfg->dir, dir); }

void WqCfg_SetFileName(WqCfg *cfg, const char *name) {
  cfg->fileName[sizeof cfg->fileName - 1] = '\0';
  WqStr_nCopy(cfg->fileName, name, sizeof cfg->fileName - 1);
}

void WqCfg_Sect(WqCfg *cfg, const char *section) { wqCopyFitting(cfg->sect, section); }

void WqCfg_SetPath(WqCfg *cfg) { wqJoin(cfg->path, cfg->dir, "\\", cfg->fileName); }

// Refuses the modes of WqCfg_WriteTmp. Without a temporary file WqCfg_WriteEnd would delete the settings file.
void WqCfg_Write(WqCfg *cfg, uint32_t mode) {
  const bool ofTmp = mode == WQ_CFG_WRITE_TMP || mode == WQ_CFG_WRITE_TMP_FAILED;
  cfg->mode = ofTmp ? WQ_CFG_WRITE : mode;
  cfg->tmpPath[0] = '\0';
}

int WqCfg_WriteTmp(WqCfg *cfg) {
  const bool ready = wqJoin(cfg->tmpPath, cfg->dir, "\\~", cfg->fileName) && makeEmptyFile(cfg->tmpPath);
  cfg->mode = ready ? WQ_CFG_WRITE_TMP : WQ_CFG_WRITE;
  return ready;
}

// First delete, then move: a move doesn't replace a file. Settings that lack a value don't replace complete ones.
void WqCfg_WriteEnd(WqCfg *cfg) {
  if (!isProtected(cfg)) return;
  if (cfg->mode == WQ_CFG_WRITE_TMP) {
    DeleteFileA(cfg->path);
    MoveFileA(cfg->tmpPath, cfg->path);
  } else {
    DeleteFileA(cfg->tmpPath);
  }
  WqCfg_Write(cfg, WQ_CFG_WRITE);
}

int32_t WqCfg_Int(WqCfg *cfg, const char *key, int32_t value) {
  if (cfg->mode == WQ_CFG_READ) return static_cast<int32_t>(GetPrivateProfileIntA(cfg->sect, key, value, cfg->path));
  char text[12];
  WqStr_Int(text, value);
  writeText(cfg, key, text);
  return value;
}

uint32_t WqCfg_Str(WqCfg *cfg, const char *key, char *text, const char *defaultText, uint32_t size) {
  if (cfg->mode != WQ_CFG_READ) return static_cast<uint32_t>(writeText(cfg, key, text));
  return GetPrivateProfileStringA(cfg->sect, key, defaultText ? defaultText : "", text, size, cfg->path);
}

int WqCfg_IsExist(const char *path) { return WqDir_IsExist(path); }
