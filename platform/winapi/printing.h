/* Printers, their settings, the print dialog, and documents drawn through a printer's context.
 *
 * One printer always exists here: "PDF" writes a PDF file. The printers of the system's spooler (CUPS) come after it.
 * On paper, lines, fills and hatches stay lines and areas, and bitmaps keep their pixels. Text stays text that can be
 * searched, and the file contains its characters. Paper can't be read: raster operations find white there, or black
 * where the source would be invisible on white. GetPixel and copies from paper fail. Hatches and dashes have the same
 * size as on a screen. */
#ifndef PLATFORM_WINAPI_PRINTING_H
#define PLATFORM_WINAPI_PRINTING_H

#include "platform/winapi/memory.h"
#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Settings of a printer. In a program's settings only the members count that dmFields names. */

#define CCHDEVICENAME 32
#define CCHFORMNAME 32
#define DM_SPECVERSION 0x0401
#define DM_ORIENTATION 0x0001u
#define DM_PAPERSIZE 0x0002u
#define DM_PAPERLENGTH 0x0004u
#define DM_PAPERWIDTH 0x0008u
#define DM_SCALE 0x0010u
#define DM_COPIES 0x0100u
#define DM_DEFAULTSOURCE 0x0200u
#define DM_PRINTQUALITY 0x0400u
#define DM_COLOR 0x0800u
#define DM_DUPLEX 0x1000u
#define DM_YRESOLUTION 0x2000u
#define DM_COLLATE 0x8000u
#define DMORIENT_PORTRAIT 1
#define DMORIENT_LANDSCAPE 2
#define DMPAPER_LETTER 1
#define DMPAPER_TABLOID 3
#define DMPAPER_LEGAL 5
#define DMPAPER_EXECUTIVE 7
#define DMPAPER_A3 8
#define DMPAPER_A4 9
#define DMPAPER_A5 11
#define DMPAPER_B4 12
#define DMPAPER_B5 13
#define DMPAPER_USER 256
#define DMRES_DRAFT (-1)
#define DMRES_LOW (-2)
#define DMRES_MEDIUM (-3)
#define DMRES_HIGH (-4)
#define DMCOLOR_MONOCHROME 1
#define DMCOLOR_COLOR 2
#define DMDUP_SIMPLEX 1
#define DMCOLLATE_FALSE 0
#define DMCOLLATE_TRUE 1

typedef struct _devicemodeA {
  BYTE dmDeviceName[CCHDEVICENAME]; /* its first 31 bytes */
  WORD dmSpecVersion, dmDriverVersion, dmSize, dmDriverExtra;
  DWORD dmFields;      /* DM_...: the members that count */
  short dmOrientation; /* DMORIENT_... */
  short dmPaperSize;   /* DMPAPER_... */
  short dmPaperLength; /* in tenths of a millimetre, upright, for a paper of another size */
  short dmPaperWidth;
  short dmScale;
  short dmCopies;
  short dmDefaultSource;
  short dmPrintQuality; /* dots in an inch, or DMRES_... */
  short dmColor, dmDuplex;
  short dmYResolution; /* dots in an inch downwards, if they differ */
  short dmTTOption, dmCollate;
  BYTE dmFormName[CCHFORMNAME];
  WORD dmLogPixels;
  DWORD dmBitsPerPel, dmPelsWidth, dmPelsHeight, dmDisplayFlags, dmDisplayFrequency, dmICMMethod, dmICMIntent,
      dmMediaType, dmDitherType, dmReserved1, dmReserved2, dmPanningWidth, dmPanningHeight;
} DEVMODEA;

/* Names of a printer: the offsets in bytes of texts behind this record. */
typedef struct tagDEVNAMES {
  WORD wDriverOffset, wDeviceOffset, wOutputOffset;
  WORD wDefault; /* DN_DEFAULTPRN for the default printer */
} DEVNAMES;

#define DN_DEFAULTPRN 0x0001u

/* The list of printers. */

#define PRINTER_ENUM_DEFAULT 0x0001u
#define PRINTER_ENUM_LOCAL 0x0002u
#define PRINTER_ENUM_CONNECTIONS 0x0004u
#define PRINTER_ENUM_NAME 0x0008u
#define PRINTER_ENUM_ICON8 0x00800000u
#define PRINTER_ATTRIBUTE_QUEUED 0x0001u
#define PRINTER_ATTRIBUTE_DEFAULT 0x0004u
#define PRINTER_ATTRIBUTE_LOCAL 0x0040u

typedef struct _PRINTER_INFO_1A {
  DWORD Flags;
  LPSTR pDescription, pName, pComment;
} PRINTER_INFO_1A;

typedef struct _PRINTER_INFO_2A {
  LPSTR pServerName, pPrinterName, pShareName, pPortName, pDriverName, pComment, pLocation;
  DEVMODEA *pDevMode;
  LPSTR pSepFile, pPrintProcessor, pDatatype, pParameters;
  LPVOID pSecurityDescriptor;
  DWORD Attributes, Priority, DefaultPriority, StartTime, UntilTime, Status, cJobs, AveragePPM;
} PRINTER_INFO_2A;

typedef struct _PRINTER_INFO_4A {
  LPSTR pPrinterName, pServerName;
  DWORD Attributes;
} PRINTER_INFO_4A;

typedef struct _PRINTER_INFO_5A {
  LPSTR pPrinterName, pPortName;
  DWORD Attributes, DeviceNotSelectedTimeout, TransmissionRetryTimeout;
} PRINTER_INFO_5A;

/* Writes records of a level (1, 2, 4, 5) to a buffer, and their texts behind them. name has no effect.
 * needed: gets the whole size. returned: gets the number of records.
 * Result: FALSE with ERROR_INSUFFICIENT_BUFFER if the buffer is too small. */
PLATFORM_API BOOL WINAPI EnumPrintersA(DWORD flags, LPSTR name, DWORD level, BYTE *buffer, DWORD size, DWORD *needed,
                                       DWORD *returned);
/* size: of the buffer in bytes; gets the size of the name with its NUL. */
PLATFORM_API BOOL WINAPI GetDefaultPrinterA(LPSTR buffer, DWORD *size);

/* The print dialog. */

#define PD_ALLPAGES 0x00000000u
#define PD_SELECTION 0x00000001u
#define PD_PAGENUMS 0x00000002u
#define PD_NOSELECTION 0x00000004u
#define PD_NOPAGENUMS 0x00000008u
#define PD_COLLATE 0x00000010u
#define PD_PRINTTOFILE 0x00000020u
#define PD_PRINTSETUP 0x00000040u
#define PD_RETURNDC 0x00000100u
#define PD_RETURNIC 0x00000200u
#define PD_RETURNDEFAULT 0x00000400u
#define PD_ENABLEPRINTHOOK 0x00001000u
#define PD_USEDEVMODECOPIES 0x00040000u
#define PD_USEDEVMODECOPIESANDCOLLATE 0x00040000u
#define PD_DISABLEPRINTTOFILE 0x00080000u
#define PD_HIDEPRINTTOFILE 0x00100000u

typedef UINT_PTR(CALLBACK *LPPRINTHOOKPROC)(HWND, UINT, WPARAM, LPARAM);
typedef UINT_PTR(CALLBACK *LPSETUPHOOKPROC)(HWND, UINT, WPARAM, LPARAM);

#if UINTPTR_MAX == 0xFFFFFFFFu
#pragma pack(push, 1)
#endif
typedef struct tagPDA {
  DWORD lStructSize;
  HWND hwndOwner;
  HGLOBAL hDevMode;  /* a DEVMODEA, which the caller frees */
  HGLOBAL hDevNames; /* a DEVNAMES, likewise */
  HDC hDC;           /* with PD_RETURNDC or PD_RETURNIC; the caller ends it with DeleteDC */
  DWORD Flags;
  WORD nFromPage, nToPage, nMinPage, nMaxPage, nCopies;
  HINSTANCE hInstance;
  LPARAM lCustData;
  LPPRINTHOOKPROC lpfnPrintHook;
  LPSETUPHOOKPROC lpfnSetupHook;
  LPCSTR lpPrintTemplateName, lpSetupTemplateName;
  HGLOBAL hPrintTemplate, hSetupTemplate;
} PRINTDLGA;
#if UINTPTR_MAX == 0xFFFFFFFFu
#pragma pack(pop)
#endif

#define PDERR_RETDEFFAILURE 0x1003u
#define PDERR_NODEFAULTPRN 0x1008u
#define PDERR_CREATEICFAILURE 0x100Au
#define PDERR_PRINTERNOTFOUND 0x100Bu

/* Ids of the controls in the dialog. */
#define psh3 0x0402 /* looks for the file to print to */
#define chx1 0x0410 /* print to a file */
#define chx2 0x0411 /* copy after copy, not page after page */
#define chx3 0x0412 /* landscape */
#define rad1 0x0420 /* all pages */
#define rad2 0x0421 /* what is selected */
#define rad3 0x0422 /* these pages: */
#define cmb2 0x0471 /* the paper */
#define cmb4 0x0473 /* the printer */
#define edt1 0x0480 /* the first page */
#define edt2 0x0481 /* the last page */
#define edt3 0x0482 /* copies */
#define edt4 0x0483 /* the file */

/* Lets the user choose a printer, pages and copies. hDevMode and hDevNames say what the user begins with, the default
 * printer where they are null, and get the choice. With PD_RETURNDEFAULT both are null before, and get the default
 * printer's; nothing is asked then, nor without a display: the answer is what the user would begin with.
 *
 * Flags say what can be chosen (PD_NOSELECTION, PD_NOPAGENUMS, PD_HIDEPRINTTOFILE ...) and is chosen at first, and tell
 * which pages were (PD_PAGENUMS, PD_SELECTION). Pages go from nMinPage to nMaxPage; where that is one, none can be
 * chosen. Copies are in nCopies and PD_COLLATE, and with PD_USEDEVMODECOPIES in the settings, while nCopies is 1. A
 * file that the user has chosen is in the output text of hDevNames; a document whose own output file is null goes
 * there, the first of the context.
 * The hook (PD_ENABLEPRINTHOOK) gets the dialog's messages before the dialog does, from WM_INITDIALOG on, whose lParam
 * is the record; what it answers with something other than 0 is answered. Templates have no effect.
 * Result: FALSE when the user has cancelled, with CommDlgExtendedError 0, and after an error, with PDERR_... or
 * CDERR_... */
PLATFORM_API BOOL WINAPI PrintDlgA(PRINTDLGA *dialog);

/* Documents. Results above 0 are successes, all others are SP_... errors. */

#define SP_ERROR (-1)
#define SP_APPABORT (-2)
#define SP_USERABORT (-3)
#define SP_OUTOFDISK (-4)
#define SP_OUTOFMEMORY (-5)

typedef struct _DOCINFOA {
  int cbSize;
  LPCSTR lpszDocName;
  LPCSTR lpszOutput; /* the output file; null for the printer's usual way */
  LPCSTR lpszDatatype;
  DWORD fwType;
} DOCINFOA;

/* Result: whether printing shall go on. */
typedef BOOL(CALLBACK *ABORTPROC)(HDC, int);

/* Begins a document. Drawing needs StartPage first. The "PDF" printer writes the output file, or "<document name>.pdf"
 * in the current folder; if that name is taken, a number is added. Until EndDoc the file lies beside its place under
 * another name.
 * Result: the document's number. */
PLATFORM_API int WINAPI StartDocA(HDC dc, const DOCINFOA *info);
PLATFORM_API int WINAPI StartPage(HDC dc);
/* Ends a page and asks the abort procedure whether to go on. If not, the document is given up. */
PLATFORM_API int WINAPI EndPage(HDC dc);
/* Ends an open page too. A document without pages leaves no file. */
PLATFORM_API int WINAPI EndDoc(HDC dc);
/* Gives a document up: nothing is left of it. DeleteDC does so with a document that wasn't ended. */
PLATFORM_API int WINAPI AbortDoc(HDC dc);
/* procedure: null for none. */
PLATFORM_API int WINAPI SetAbortProc(HDC dc, ABORTPROC procedure);
/* Changes the settings from the next page on. Result: the context; null within a page. */
PLATFORM_API HDC WINAPI ResetDCA(HDC dc, const DEVMODEA *mode);

#ifdef __cplusplus
}
#endif

#endif
