/* Files, folders, settings and the event log. */
#ifndef WQ_FILES_FILES_H
#define WQ_FILES_FILES_H

#include "containers/containers.h"
#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* File names may have both forms, "C:\a\b.txt" and "C:/a/b.txt". */

/* ---- WqFile: a file and a view of it -----------------------------------------------------------------------------
 *
 * A thin layer over the platform's functions, without buffers and retries. A record has room for a path, a handle and a
 * view. A second open without a close loses the first handle. Sizes have 32 bits.
 */

typedef struct WqFile {
  HANDLE file;    /* null before the first open and after a close; INVALID_HANDLE_VALUE after a failed open */
  HANDLE mapping; /* set by the mapping functions */
  void *view;     /* likewise */
  char path[260];
} WqFile;

/* Zeroes the record. */
WQ_API void WqFile_Init(WqFile *file);

/* Both close the file if it is open. The path stays, so that the record can be opened again; a view stays too. */
WQ_API void WqFile_Term(WqFile *file);
WQ_API void WqFile_Close(WqFile *file);

/* Sets the path.
 * path: a longer path is cut to its first 259 bytes.
 * Result: the number of bytes stored. */
WQ_API int32_t WqFile_Path(WqFile *file, const char *path);

/* Opens an existing file for reading. Others may read it meanwhile, but not write it.
 * Result: the handle, which the record owns; null on failure, and for an empty path. */
WQ_API HANDLE WqFile_ReadOpen(WqFile *file);

/* Creates a file for writing, or empties an existing one. Others can't open it meanwhile.
 * Result: the handle, which the record owns; null on failure, and for an empty path. */
WQ_API HANDLE WqFile_WriteOpen(WqFile *file);

/* Opens a file for reading and writing with its content, or creates it. Others can't open it meanwhile.
 * Result: the handle, which the record owns; null on failure, and for an empty path. */
WQ_API HANDLE WqFile_ReadWriteOpen(WqFile *file);

/* Reads from, or writes to, the file's current position, and moves it.
 * size: in bytes.
 * Result: the bytes read or written, which may be fewer than asked; 0 on failure, without an open file, and for a read
 * at the end of the file. */
WQ_API uint32_t WqFile_Read(WqFile *file, void *bytes, uint32_t size);
WQ_API uint32_t WqFile_Write(WqFile *file, const void *bytes, uint32_t size);

/* Stores and returns the file's size.
 * size: receives the size in bytes.
 * Result: the size; 0xFFFFFFFF on failure. Of a size above 32 bits only the low half is given. */
WQ_API uint32_t WqFile_Size(WqFile *file, uint32_t *size);

/* Map a view of the whole file, for reading, or for reading and writing. The file must be open with at least that
 * access.
 * Result: the view's address, valid until WqFile_UnMapping; null on failure, and for an empty file. */
WQ_API void *WqFile_ReadMapping(WqFile *file);
WQ_API void *WqFile_ReadWriteMapping(WqFile *file);

/* Writes changed bytes of a view to the file.
 * file: has no effect. address, size: the part of the view, in bytes; size 0 stands for everything behind the address.
 * Result: not 0 on success. */
WQ_API BOOL WqFile_FlushMapping(WqFile *file, const void *address, size_t size);

/* Ends the view and its mapping, and clears both fields.
 * Result: not 0 when a view was ended. */
WQ_API BOOL WqFile_UnMapping(WqFile *file);

/* Tells whether a file is found along a search path, by the platform's SearchPathA.
 * unused: has no effect. path: folders separated by semicolons; null for the platform's default search.
 * extension: added to a name without extension, with its point; may be null.
 * Result: the length of the full path found; 0 if there is none. The path itself isn't given. */
WQ_API uint32_t WqFile_SearchPath(const void *unused, const char *path, const char *fileName, const char *extension);

/* Makes a path text empty. */
WQ_API void WqPath_Init(char *path);

/* Does nothing. */
WQ_API void WqPath_Term(char *path);

/* ---- WqDir, WqDrive: folders and drives --------------------------------------------------------------------------
 *
 * Separators are backslashes; 0x5C as the second byte of a double-byte character is none. WqDir_Create, WqDir_Delete
 * and WvDir_CopyFile work on paths of less than 256 bytes and skip longer ones. The limit of WqDir_Collect is 259
 * bytes. */

/* All make a path text empty. */
WQ_API void WqDir_Init(char *path);
WQ_API void WqDrive_Init(char *path);
WQ_API void WqDrive_Term(char *path);

/* Does nothing. */
WQ_API void WqDir_Term(char *path);

/* Result: 1 if a file or a folder matches the path, which may hold wildcards, else 0. A path that ends in a backslash
 * matches nothing. */
WQ_API int WqDir_IsExist(const char *path);

/* Makes all missing folders of a path. The first part, usually a drive, is taken to exist.
 * path: without a backslash at its end.
 * Result: 1 if all folders exist now; 0 if one could not be made. Folders made before it stay. */
WQ_API int WqDir_Create(const char *path);

/* Removes a folder with its content. Read-only, hidden, system and temporary files stay, and so do folders whose name
 * begins with a point, and all folders above these. Of a link to a folder only the link is removed.
 * path: with or without a backslash at its end.
 * Result: 0 if the path doesn't exist or is too long, else 1, even if something is left. */
WQ_API int WqDir_Delete(const char *path);

/* Lists the entries of a folder, files and subfolders alike, without those in subfolders. Hidden, system and temporary
 * entries are left out.
 * folder: an entry is this text, a backslash, and the name. pattern: selects names, such as "*.wav".
 * Result: the first node of a new list in the platform's order; null if there is no such folder or entry. The data
 * are texts of 260 bytes. The caller frees nodes and texts with WqList_RemoveAllWith. If memory is short the list ends
 * early. Entries longer than 259 bytes are left out. */
WQ_API WqList *WqDir_Collect(const char *folder, const char *pattern);

/* Copies a tree into a folder, which is made if it is missing. Existing files are never overwritten. Hidden, system and
 * temporary files, folders whose name begins with a point, and links to folders are not copied. A folder without files
 * is not made. The destination may lie in the source: only the files that the tree held before are copied. Failures are
 * not reported. */
WQ_API void WvDir_CopyFile(const char *source, const char *destination);

/* Copies the part of a path before its last backslash. WvDir_PathTo is the same function with its arguments swapped.
 * Result: the length of the copy; 0, with an empty text, for a path without a backslash. */
WQ_API int32_t WqDir_GetFromPath(const char *path, char *folder);
WQ_API int32_t WvDir_PathTo(char *folder, const char *path);

/* Asks the user for a folder, in a dialog over the main window. Calls must not nest.
 * folder: selected first. caption: of the dialog, cut at 87 bytes. prompt: a text above the folders. newStyle: not 0
 * for the platform's newer look. chosen: room for MAX_PATH bytes.
 * Result: 1 with the path in chosen; 0 if the user chose nothing, and chosen stays as it was. */
WQ_API int WqDir_Dlg(const char *folder, const char *caption, const char *prompt, int32_t newStyle, char *chosen);

/* Result: the free bytes on the path's drive, or on the current drive for a path without one. Only the low 32 bits are
 * given, so a large disk may show a small number. 0 if there is no such drive or no medium in it. */
WQ_API uint32_t WqDrive_FreeSpace(const char *path);

/* Result: 0 if the path's drive is of unknown kind or a CD drive, else 1. */
WQ_API int WqDrive_IsWrite(const char *path);

/* Writes the current drive as "C:\".
 * name: has room for 4 bytes. */
WQ_API void WqDrive_CurrentName(char *name);

/* ---- WqCfg: settings in a private profile ------------------------------------------------------------------------
 *
 * One record works both ways: its mode decides whether WqCfg_Int and WqCfg_Str read or write. So the same routine loads
 * and saves. A protected save writes to a temporary file beside the settings file, and replaces the settings file at
 * the end:
 *
 *   WqCfg_WriteTmp(&cfg);   - or straight to the settings file if there can be no temporary one
 *   ... the routine ...
 *   WqCfg_WriteEnd(&cfg);
 *
 * It needs the folder and the file's name (WqCfg_SetDir, WqCfg_SetFileName, WqCfg_SetPath). Values that the routine
 * doesn't write are gone afterwards. A process that dies during a save leaves the old file or the new one. If it dies
 * between delete and move, it leaves a complete temporary file, named like the settings file with "~" in front. */

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

/* Both zero the record, so that it reads. */
WQ_API void WqCfg_Init(WqCfg *cfg);
WQ_API void WqCfg_Term(WqCfg *cfg);

/* Set a field. A longer text is cut: path, folder and name at 259 bytes, a section at 255. */
WQ_API void WqCfg_Path(WqCfg *cfg, const char *path);
WQ_API void WqCfg_SetDir(WqCfg *cfg, const char *dir);
WQ_API void WqCfg_SetFileName(WqCfg *cfg, const char *name);
WQ_API void WqCfg_Sect(WqCfg *cfg, const char *section);

/* Builds the path from folder, backslash and name, cut at 259 bytes. */
WQ_API void WqCfg_SetPath(WqCfg *cfg);

/* Sets the mode and gives up a protected save. Its temporary file stays on the disk.
 * mode: WQ_CFG_READ or WQ_CFG_WRITE. */
WQ_API void WqCfg_Write(WqCfg *cfg, uint32_t mode);

/* Begins a protected save: makes the temporary file, or empties one of an earlier run.
 * Result: 1, and values go to the temporary file. 0 if there can be no such file, for instance because its name is too
 * long, and values go straight to the settings file. */
WQ_API int WqCfg_WriteTmp(WqCfg *cfg);

/* Ends a protected save: the temporary file replaces the settings file. If a value could not be written, the settings
 * file stays as it is instead, and the temporary file is deleted. Outside a protected save nothing happens, so the call
 * is always allowed. Afterwards the record writes straight to the settings file. */
WQ_API void WqCfg_WriteEnd(WqCfg *cfg);

/* Reads or writes a number.
 * value: the default, or the value to write.
 * Result: reading, the stored value or the default; writing, value. */
WQ_API int32_t WqCfg_Int(WqCfg *cfg, const char *key, int32_t value);

/* Reads or writes a text. In a list such as 7,"a,b", texts are written by WqStr_CfgStr and read by WqScan_String. A
 * single text is written unchanged, and reading removes one pair of quotes around it.
 * text: reading, receives the value; writing, holds it. defaultText: null counts as an empty text. size: room in text,
 * in bytes.
 * Result: reading, the bytes copied; writing, not 0 on success. */
WQ_API uint32_t WqCfg_Str(WqCfg *cfg, const char *key, char *text, const char *defaultText, uint32_t size);

/* The same as WqDir_IsExist. */
WQ_API int WqCfg_IsExist(const char *path);

/* ---- WqLog: the event log ----------------------------------------------------------------------------------------
 *
 * One ring of the process holds the last 32768 events, each with its local time. Nothing reaches a disk before
 * WqLog_Out. The log works without WqMain_Init, which empties it. Only one thread at a time may use it. */

#define WQ_LOG_TEXT 0x100u       /* bit of a kind: the data is a text that ends with NUL, and has its size */
#define WQ_LOG_COMMENT 0x100u    /* a text shown with its time */
#define WQ_LOG_RAW 0x101u        /* a text shown unchanged, without time */
#define WQ_LOG_NO_MEMORY 0x1000u /* the data could not be kept */

/* Empties the ring without freeing its data; only for the start. */
WQ_API void WqLog_Init(void);

/* Frees all data. Before further use the log needs WqLog_Init. */
WQ_API void WqLog_Term(void);

/* Result: the number of records, at most 32768. */
WQ_API uint32_t WqLog_GetCount(void);

/* Removes all records. Their memory is freed when new records replace them, or by WqLog_Term. */
WQ_API void WqLog_Flush(void);

/* Adds a record. If the ring is full, the oldest record goes. If memory is short, the record has the kind
 * WQ_LOG_NO_MEMORY and no data.
 * kind: one of the above, or any other for bytes. data: is copied. size: in bytes; has no effect for a text. */
WQ_API void WqLog_Add(uint32_t kind, const void *data, uint32_t size);

/* Adds a comment. */
WQ_API void WqLog_Comment(const char *text);

/* Formatted print into a comment, or into raw text; cut at 255 bytes. */
WQ_API void WqLog_Print(const char *format, ...) WQ_PRINTF(1, 2);
WQ_API void WqLog_Text(const char *format, ...) WQ_PRINTF(1, 2);

/* Writes all records to a file, the oldest first. The ring stays as it is. The dump is text in code page 932 with CR
 * LF. It begins with a heading with the present time. Then follow comments with their time, raw texts, and bytes in
 * hexadecimal, sixteen to a line. Texts are cut so that a line has at most 255 bytes, including the time.
 * fileName: an existing file is replaced. A message box tells if the file can't be created. */
WQ_API void WqLog_Out(const char *fileName);

#ifdef __cplusplus
}
#endif

#endif
