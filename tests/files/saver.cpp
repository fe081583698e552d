// Saves settings by the protected save without a pause, until it is killed: saver FOLDER Each save has the number
// behind the one before in all its values. A file "saving" is made when the first save is over. It ends by itself after
// a while, so that a test that failed leaves none behind.

#include "wq.h"

#include <initializer_list>

int main(int argc, char **argv) {
  if (argc != 2) return 2;
  WqMain_Init(nullptr);
  WqCfg cfg;
  WqCfg_Init(&cfg);
  WqCfg_SetDir(&cfg, argv[1]);
  WqCfg_SetFileName(&cfg, "Set.ini");
  WqCfg_SetPath(&cfg);
  WqCfg_Sect(&cfg, "saver");
  WqFile saving;
  WqFile_Init(&saving);
  WqFile_Path(&saving, argv[1]);
  WqStr_Copy(saving.path + WqStr_Len(saving.path), "\\saving");

  int32_t number = WqCfg_Int(&cfg, "first", 0);
  for (const uint32_t start = GetTickCount(); GetTickCount() - start < 60000;) {
    ++number;
    if (!WqCfg_WriteTmp(&cfg)) return 3;
    for (const char *key : {"first", "second", "last"}) WqCfg_Int(&cfg, key, number);
    WqCfg_WriteEnd(&cfg);
    if (!saving.file && !WqFile_WriteOpen(&saving)) return 4;
  }
}
