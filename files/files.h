/* Files, folders, settings and the event log. */
#ifndef WQ_FILES_FILES_H
#define WQ_FILES_FILES_H

#include "containers/containers.h"
#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* File names are taken in both forms, "C:\a\b.txt" and "C:/a/b.txt". */

/* ---- WqFile: a file and a view of it -----------------------------------------------------------------------------
 *
 * A thin layer over the platform's calls: nothing is buffered or retried. A record has room for a name, a
 * handle and a view. Whoever opens twice without closing loses the first handle. Sizes are 32-bit.
 */

typedef struct WqFile {
  HANDLE file;    /* null before any open and after WqFile_Term; INVALID_HANDLE_VALUE after a failed open */
  HANDLE mapping; /* set by the mapping functions */
  void *view;     /* likewise */
  char path[260];
} WqFile;

/* Zeroes the record. */
WQ_API void WqFile_Init(WqFile *file);

/* Both close the file, if one is open. The path stays, so that the record can be opened again; a view stays too. */
WQ_API void WqFile_Term(WqFile *file);
WQ_API void WqFile_Close(WqFile *file);

/* Sets the path.
 * path: of a longer one the first 259 bytes are taken.
 * Result: the number of bytes taken. */
WQ_API int32_t WqFile_Path(WqFile *file, const char *path);

/* Opens an existing file for reading; other readers are admitted, writers are not.
 * Result: the handle, which the record owns; null on failure, and for an empty path. */
WQ_API HANDLE WqFile_ReadOpen(WqFile *file);

/* Creates a file for writing, or empties an existing one; nobody else is admitted.
 * Result: the handle, which the record owns; null on failure, and for an empty path. */
WQ_API HANDLE WqFile_WriteOpen(WqFile *file);

/* Opens a file for reading and writing with its content, or creates it; nobody else is admitted.
 * Result: the handle, which the record owns; null on failure, and for an empty path. */
WQ_API HANDLE WqFile_ReadWriteOpen(WqFile *file);

/* Reads from, or writes to, the file's current position.
 * size: in bytes.
 * Result: the bytes read or written, which may be fewer than asked; 0 on failure, without an open file, and for a read
 * at the end of the file. */
WQ_API uint32_t WqFile_Read(WqFile *file, void *bytes, uint32_t size);
WQ_API uint32_t WqFile_Write(WqFile *file, const void *bytes, uint32_t size);

/* Stores and returns the file's size.
 * size: receives the size in bytes.
 * Result: the same; 0xFFFFFFFF on failure. Of a size above 32 bits the low half comes. */
WQ_API uint32_t WqFile_Size(WqFile *file, uint32_t *size);

/* Map a view of the whole file, for reading, or for reading and writing. The file was opened with at least that access.
 * Result: the view's address, valid until WqFile_UnMapping; null on failure, and for an empty file. */
WQ_API void *WqFile_ReadMapping(WqFile *file);
WQ_API void *WqFile_ReadWriteMapping(WqFile *file);

/* Writes changed bytes of a view to the file.
 * file: has no effect. address, size: the part of the view, in bytes; a size of 0 stands for all behind the address.
 * Result: not 0 on success. */
WQ_API BOOL WqFile_FlushMapping(WqFile *file, const void *address, size_t size);

/* Ends the view and its mapping, and clears both fields.
 * Result: not 0 when a view was ended. */
WQ_API BOOL WqFile_UnMapping(WqFile *file);

/* Tells whether a file is found along a search path, as the platform's SearchPathA does.
 * unused: has no effect. path: folders with semicolons between them; null for the platform's own search.
 * extension: added to a name that has none, with its point; may be null.
 * Result: the length of the full path found, which is not handed out; 0 when there is none. */
WQ_API uint32_t WqFile_SearchPath(const void *unused, const char *path, const char *fileName, const char *extension);

/* Makes a path text empty. */
WQ_API void WqPath_Init(char *path);

/* Does nothing. */
WQ_API void WqPath_Term(char *path);

/* ---- WqDir, WqDrive: folders and drives --------------------------------------------------------------------------
 *
 * Separators are backslashes; a double-byte character whose second byte is 0x5C is none. WqDir_Create, WqDir_Delete and
 * WvDir_CopyFile work with paths of less than 256 bytes; what would be longer is left alone. WqDir_Collect takes 259. */

/* All make a path text empty. */
WQ_API void WqDir_Init(char *path);
WQ_API void WqDrive_Init(char *path);
WQ_API void WqDrive_Term(char *path);

/* Does nothing. */
WQ_API void WqDir_Term(char *path);

/* Result: 1 when a file or a folder matches the path, which may hold wildcards, else 0. A path that ends in a backslash
 * matches nothing. */
WQ_API int WqDir_IsExist(const char *path);

/* Makes a whole path of folders, whatever is missing of it. The first part, a drive as a rule, is taken to exist.
 * path: without a backslash at its end.
 * Result: 1 when all folders exist now; 0 when one could not be made, and those made before it stay. */
WQ_API int WqDir_Create(const char *path);

/* Removes a folder with all it holds, except for read-only, hidden, system and temporary files and for folders whose
 * name begins with a point; those stay, and so do the folders above them. A link to a folder is removed as a link, and
 * what it leads to stays.
 * path: with or without a backslash at its end.
 * Result: 0 when the path doesn't exist or is too long, else 1, whatever is left. */
WQ_API int WqDir_Delete(const char *path);

/* Lists what a folder holds, subfolders like files, without going down into them. Hidden, system and temporary entries
 * are left out.
 * folder: an entry is this text, a backslash, and the name. pattern: the names wanted, such as "*.wav".
 * Result: the first node of a new list in the platform's order, whose data are texts of 260 bytes; both are given back
 * with WqList_RemoveAllWith. Null when there is no such folder or no entry. If memory is short the list ends early; an
 * entry longer than 259 bytes is left out. */
WQ_API WqList *WqDir_Collect(const char *folder, const char *pattern);

/* Copies a tree into a folder, which is made where it is missing. Existing files are never overwritten; hidden, system
 * and temporary files, and folders whose name begins with a point, are not copied. A folder without files is not made. Links to
 * folders in the tree are left out. The destination may lie in the source: what the tree held before is copied, once.
 * Failures are not reported. */
WQ_API void WvDir_CopyFile(const char *source, const char *destination);

/* Copies what stands before the last backslash. WvDir_PathTo is the same with its arguments swapped.
 * Result: the length of the copy; 0, with an empty text, for a path without a backslash. */
WQ_API int32_t WqDir_GetFromPath(const char *path, char *folder);
WQ_API int32_t WvDir_PathTo(char *folder, const char *path);

/* Asks the user for a folder, over the main window. It doesn't nest.
 * folder: selected first. caption: of the dialog, cut at 87 bytes. prompt: a text above the folders. newStyle: other than
 * 0 for the platform's newer look. chosen: room for MAX_PATH bytes.
 * Result: 1 with the path in chosen; 0 when none was chosen, and chosen stays. */
WQ_API int WqDir_Dlg(const char *folder, const char *caption, const char *prompt, int32_t newStyle, char *chosen);

/* Result: the free bytes on the path's drive, or on the current one for a path without a drive; the low 32 bits, so that
 * a large disk can show a small number. 0 when there is no such drive, or nothing in it. */
WQ_API uint32_t WqDrive_FreeSpace(const char *path);

/* Result: 0 when the path's drive is of an unknown kind or a CD drive, else 1. */
WQ_API int WqDrive_IsWrite(const char *path);

/* Writes the current drive as "C:\".
 * name: has room for 4 bytes. */
WQ_API void WqDrive_CurrentName(char *name);

/* ---- WqCfg: settings in a private profile ------------------------------------------------------------------------
 *
 * One record works both ways: its mode says whether WqCfg_Int and WqCfg_Str read or write, so that one routine both
 * loads and saves. A protected save writes to a temporary file beside the settings file, which takes its place at the
 * end:
 *
 *   WqCfg_WriteTmp(&cfg);   - or straight to the settings file if there can be no temporary one
 *   ... the routine ...
 *   WqCfg_WriteEnd(&cfg);
 *
 * It needs the folder and the file's name (WqCfg_SetDir, WqCfg_SetFileName, WqCfg_SetPath). What the routine doesn't
 * write is gone afterwards. A process that dies on the way leaves the old file, or the new one, or, between the delete
 * and the move, a complete temporary file, named like the settings file with "~" in front. */

#define WQ_CFG_READ 0u
#define WQ_CFG_WRITE 1u
#define WQ_CFG_WRITE_TMP 3u
#define WQ_CFG_WRITE_TMP_FAILED 7u /* a protected save in which a value could not be written */

typedef struct WqCfg {
  char path[260];    /* the settings file */
  char tmpPath[260]; /* the temporary file of a protected save */
  char dir[260];     /* folder of the settings file, without a backslash at its end */
  char fileName[260];
  uint32_t mode; /* WQ_CFG_... */
  char sect[256];
} WqCfg;

/* Both zero the record, which makes it read. */
WQ_API void WqCfg_Init(WqCfg *cfg);
WQ_API void WqCfg_Term(WqCfg *cfg);

/* Set a field. A text that doesn't fit is cut: a path, a folder and a name at 259 bytes, a section at 255. */
WQ_API void WqCfg_Path(WqCfg *cfg, const char *path);
WQ_API void WqCfg_SetDir(WqCfg *cfg, const char *dir);
WQ_API void WqCfg_SetFileName(WqCfg *cfg, const char *name);
WQ_API void WqCfg_Sect(WqCfg *cfg, const char *section);

/* Builds the path from folder, backslash and name, cut at 259 bytes. */
WQ_API void WqCfg_SetPath(WqCfg *cfg);

/* Sets the mode and gives up a protected save, whose temporary file stays on disk.
 * mode: WQ_CFG_READ or WQ_CFG_WRITE. */
WQ_API void WqCfg_Write(WqCfg *cfg, uint32_t mode);

/* Begins a protected save: makes the temporary file, or empties one left by an earlier run.
 * Result: 1, and values go to the temporary file; 0 when there can be none, its name being too long among the reasons,
 * and values go straight to the settings file. */
WQ_API int WqCfg_WriteTmp(WqCfg *cfg);

/* Ends a protected save: the temporary file takes the settings file's place, unless a value could not be written: then
 * the settings file stays as it is, and the temporary file goes. Outside a protected save nothing happens,
 * so that it may always be called. The record writes straight to the settings file afterwards. */
WQ_API void WqCfg_WriteEnd(WqCfg *cfg);

/* Reads or writes a number.
 * value: the default, or what to write.
 * Result: reading, the value or the default; writing, value. */
WQ_API int32_t WqCfg_Int(WqCfg *cfg, const char *key, int32_t value);

/* Reads or writes a text. In a list such as 7,"a,b" texts are made with WqStr_CfgStr and read with WqScan_String; a text
 * alone is written as it is, and reading takes one pair of quotes round it off.
 * text: reading, receives the value; writing, holds it. defaultText: null stands for an empty text. size: room of text
 * in bytes.
 * Result: reading, the bytes copied; writing, not 0 on success. */
WQ_API uint32_t WqCfg_Str(WqCfg *cfg, const char *key, char *text, const char *defaultText, uint32_t size);

/* As WqDir_IsExist. */
WQ_API int WqCfg_IsExist(const char *path);

/* ---- WqLog: the event log ----------------------------------------------------------------------------------------
 *
 * One ring of the process holds the last 32768 events, each with its local time. Nothing reaches a disk before WqLog_Out.
 * It needs no WqMain_Init, which empties it. One thread at a time uses it. */

#define WQ_LOG_TEXT 0x100u       /* bit of a kind: the data is a text, and its size is taken from it */
#define WQ_LOG_COMMENT 0x100u    /* a text shown with its time */
#define WQ_LOG_RAW 0x101u        /* a text shown as it is, without time */
#define WQ_LOG_NO_MEMORY 0x1000u /* the data could not be kept */

/* Empties the ring without releasing what it holds; for the start only. */
WQ_API void WqLog_Init(void);

/* Releases all data. The log is used again only after WqLog_Init. */
WQ_API void WqLog_Term(void);

/* Result: the number of records, at most 32768. */
WQ_API uint32_t WqLog_GetCount(void);

/* Forgets all records. Their memory is released as new records come, or by WqLog_Term. */
WQ_API void WqLog_Flush(void);

/* Adds a record; the oldest one goes when the ring is full. If memory is short the record has the kind WQ_LOG_NO_MEMORY
 * and no data.
 * kind: one of the above, or any other for bytes. data: is copied. size: in bytes; has no effect on a text. */
WQ_API void WqLog_Add(uint32_t kind, const void *data, uint32_t size);

/* Adds a comment. */
WQ_API void WqLog_Comment(const char *text);

/* Formatted print into a comment, or into raw text; cut at 255 bytes. */
WQ_API void WqLog_Print(const char *format, ...) WQ_PRINTF(1, 2);
WQ_API void WqLog_Text(const char *format, ...) WQ_PRINTF(1, 2);

/* Writes all records to a file, oldest first; the ring stays as it is. The dump is text in code page 932 with CR LF: a
 * heading with the time of the dump, then comments with their time, raw texts, and bytes in hexadecimal, sixteen to a
 * line. Texts are cut so that a line of it has at most 255 bytes, with the time.
 * fileName: an existing file is replaced. If it can't be, a message box says so. */
WQ_API void WqLog_Out(const char *fileName);

#ifdef __cplusplus
}
#endif

#endif
