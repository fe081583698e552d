// Fonts and their registry.

#include "drawing/drawing_private.h"

#include "frame/main.h"
#include "frame/memory.h"
#include "text/double_byte.h"

void WqFont_Init(WqFont *font) { *font = {}; }

void WqFont_Param(WqFont *font, const char *face, int32_t size, uint32_t style) {
  const size_t length = wqFittingLength(face, LF_FACESIZE - 1);
  WqMem_Copy(font->face, face, length);
  font->face[length] = '\0';
  font->size = size;
  font->style = style;
}

void WqFont_LogDef(WqFont *font) {
  LOGFONTA *log = &font->log;
  log->lfCharSet = DEFAULT_CHARSET;
  log->lfOutPrecision = OUT_TT_PRECIS;
  log->lfClipPrecision = CLIP_DEFAULT_PRECIS;
  log->lfQuality = DEFAULT_QUALITY;
  log->lfPitchAndFamily = DEFAULT_PITCH;
  log->lfHeight = wqDifference(0, font->size); // negative: the height of characters, not of cells
  log->lfWeight = font->style & WQ_FONT_BOLD ? FW_BOLD : FW_NORMAL;
  wqCopyFitting(log->lfFaceName, font->face);
}

void WqFont_LogEscapDef(WqFont *font, int32_t escapement) {
  WqFont_LogDef(font);
  font->log.lfEscapement = escapement;
}

HFONT WqFont_Create(WqFont *font) { return font->handle = CreateFontIndirectA(&font->log); }

void WqFont_Delete(WqFont *font) { wqDelete(font); }
void WqFont_Term(WqFont *font) { wqDelete(font); }

void WqFontTbl_Config() {}

void WqFontTbl_Insert(uint32_t id, const WqFont *font) { wqInsertRecord(&wqMain.fontTbl, id, font); }
HFONT WqFontTbl_Get(uint32_t id) { return wqGetHandle<WqFont>(&wqMain.fontTbl, id, WqFont_Create); }
void WqFontTbl_Remove(uint32_t id) { wqRemoveRecord<WqFont>(&wqMain.fontTbl, id); }
