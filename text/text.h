/* Text: strings, the scanner that reads values out of text, and name templates. */
#ifndef WQ_TEXT_TEXT_H
#define WQ_TEXT_TEXT_H

#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqStr: strings ----------------------------------------------------------------------------------------------
 *
 * Nearly every function returns the number of bytes it wrote, without the NUL, so that a text is built by adding the
 * result to a write pointer. Only WqStr_nCopy is told the size of its destination; for all others dst has room for the
 * result and its NUL. The largest results: a quoted form may be twice as long as its source and four bytes more.
 * WqStr_Int needs 12 bytes, WqStr_Rect 48, WqStr_Size 24. dst and src must not overlap.
 *
 * Strings are handled byte by byte: cuts, and what is compared or found, may begin with the second byte of a character.
 * Only WqStr_DelEsc and the scanner's WqScan_String keep such characters together.
 *
 * All functions may run on several threads at once. */

/* Result: the length of src. */
WQ_API int32_t WqStr_Len(const char *src);

/* Copies a string.
 * Result: the length of src. */
WQ_API int32_t WqStr_Copy(char *dst, const char *src);

/* Copies at most n bytes, the NUL included. When the first n bytes of src hold no NUL, dst gets none: callers who need
 * one place it first.
 * Result: the number of bytes copied that are not NUL.
 * Bad input: n below 1 gives 0 and leaves dst alone. */
WQ_API int32_t WqStr_nCopy(char *dst, const char *src, int32_t n);

/* Writes src between double quotes; nothing inside is changed.
 * Result: the length of src plus 2. */
WQ_API int32_t WqStr_CopyD(char *dst, const char *src);

/* Appends src at the end of dst.
 * Result: the length of the joined string. */
WQ_API int32_t WqStr_Cat(char *dst, const char *src);

/* Writes a followed by b.
 * Result: the length of both. */
WQ_API int32_t WqStr_CopyCat(char *dst, const char *a, const char *b);

/* Copies src without the first byte of chars, wherever it stands. When the second byte of chars is the same byte, a
 * doubled one in src becomes a single one instead: with two double quotes as chars, quotes go and doubled quotes turn
 * into single ones.
 * src: stands before dst here.
 * Result: the number of bytes written. An empty chars copies src as it is. */
WQ_API int32_t WqStr_Remove(const char *src, char *dst, const char *chars);

/* Result: 1 when both strings are equal byte for byte, else 0. */
WQ_API int WqStr_Comp(const char *a, const char *b);

/* Result: 1 when both begin with the same n bytes, without a NUL among them; else 0. For n below 1 it is 0. Neither
 * string is read past its NUL or past n bytes. */
WQ_API int WqStr_nComp(const char *a, const char *b, int32_t n);

/* Tells whether the first n bytes of pattern, none of them NUL, occur in text.
 * Result: 1 or 0; 0 for n of 0 and for an empty pattern. */
WQ_API int WqStr_Find(const char *text, const char *pattern, uint32_t n);

/* Writes the quoted form of src: in double quotes, each double quote inside doubled, a final backslash doubled.
 * Result: the length of src, not the length written. */
WQ_API int32_t WqStr_AddEsc(char *dst, const char *src);

/* Reads a quoted form whose quotes are doubled inside. White space in front is skipped, double-byte characters are
 * kept together, and a missing closing quote ends the text at its NUL. Backslashes are copied as they are: reading back
 * a final backslash, doubled by WqStr_AddEsc, is up to WqScan_String.
 * dst: has room for what src holds and a NUL.
 * Bad input: when src doesn't begin with a double quote, dst is left as it was, without a NUL. */
WQ_API void WqStr_DelEsc(char *dst, const char *src);

/* Writes the form of src for a settings file: the quoted form when src holds a double quote or a comma, else src.
 * unused: has no effect.
 * Result: the length of src in both cases. */
WQ_API int32_t WqStr_CfgStr(char *dst, const char *src, uint32_t unused);

/* Writes a decimal number, with a minus sign where it is negative, without leading zeros.
 * Result: the number of characters, 1 to 11. */
WQ_API int32_t WqStr_Int(char *dst, int32_t value);

/* Write the low 8, 16 or 32 bits as upper-case hexadecimal digits; higher bits are ignored.
 * Result: 2, 4 or 8. */
WQ_API int32_t WqStr_Hex02(char *dst, int32_t value);
WQ_API int32_t WqStr_Hex04(char *dst, int32_t value);
WQ_API int32_t WqStr_Hex08(char *dst, int32_t value);

/* The same with "0x" in front. WqStr_Hex0x02 and WqStr_Hex02A are the same.
 * Result: 4, 6 or 10. */
WQ_API int32_t WqStr_Hex0x02(char *dst, int32_t value);
WQ_API int32_t WqStr_Hex02A(char *dst, int32_t value);
WQ_API int32_t WqStr_Hex04A(char *dst, int32_t value);
WQ_API int32_t WqStr_Hex08A(char *dst, int32_t value);

/* Writes "left,top,right,bottom" in decimal, without blanks, as WqScan_Rect reads it.
 * Result: the number of characters. */
WQ_API int32_t WqStr_Rect(char *dst, const RECT *rect);

/* Write the two values with a comma between them, as WqScan_Size and WqScan_Point read them.
 * Result: the number of characters. */
WQ_API int32_t WqStr_Size(char *dst, const SIZE *size);
WQ_API int32_t WqStr_Point(char *dst, const POINT *point);

/* Formatted print of the C library, without a bound: dst has room for all of it.
 * Result: the number of characters; 0, with an empty dst, for a format that the C library refuses. */
WQ_API int32_t WqStr_Format(char *dst, const char *format, ...) WQ_PRINTF(2, 3);

/* ---- WqScan: reading values out of text --------------------------------------------------------------------------
 *
 * Every function takes a cursor, a pointer into a text, stores what it reads, and returns the new cursor, which never
 * passes the text's NUL. Only the cursor tells what was read: a failed read of counted digits, of a rectangle
 * or of a size returns the cursor it was given.
 *
 * White space is the bytes 0x09 to 0x0D, the blank, and the double-byte blank 0x81 0x40. It is skipped first by all
 * functions but WqScan_Conma, which looks for its comma before, and WqScan_SkipLine.
 *
 * A hexadecimal prefix is "0x" with a lower-case x; digits may have either case.
 *
 * All functions may run on several threads at once. */

/* Reads a whole number: a sign or none, then decimal digits, or "0x" and hexadecimal digits. Any number of digits is
 * read; the value wraps at 32 bits. A text without digits stores 0, and the cursor stands behind the white space, the
 * sign and the prefix that were there.
 * value: receives the number. */
WQ_API const char *WqScan_Int(const char *cursor, int32_t *value);

/* As WqScan_Int, storing the low 16 bits. */
WQ_API const char *WqScan_Short(const char *cursor, int16_t *value);
WQ_API const char *WqScan_UShort(const char *cursor, uint16_t *value);

/* As WqScan_Int, storing the low 8 bits. */
WQ_API const char *WqScan_Byte(const char *cursor, uint8_t *value);

/* Read exactly one, two or n decimal digits, without sign; further digits stay unread. With n below 1 the value is 0,
 * and the result lies behind the white space. The value wraps at 32 bits.
 * Bad input: with fewer digits nothing is stored and the given cursor is returned. */
WQ_API const char *WqScan_Dec1(const char *cursor, int32_t *value);
WQ_API const char *WqScan_Dec2(const char *cursor, int32_t *value);
WQ_API const char *WqScan_DecN(const char *cursor, int32_t *value, int32_t n);

/* Reads exactly two hexadecimal digits, without prefix.
 * Bad input: with fewer digits 0 is stored, and the cursor stands on the byte that is none. */
WQ_API const char *WqScan_HexByte(const char *cursor, uint8_t *value);

/* Read up to 4 or 8 hexadecimal digits, without prefix. Without any, 0 is stored. */
WQ_API const char *WqScan_HexWord(const char *cursor, uint16_t *value);
WQ_API const char *WqScan_HexDword(const char *cursor, uint32_t *value);

/* Reads up to 16 hexadecimal digits, with or without prefix; the last eight count. Without any, 0 is stored. */
WQ_API const char *WqScan_HexLong(const char *cursor, uint32_t *value);

/* Read a number with an optional fraction and exponent.
 *
 * The integer part has the form of WqScan_Int, "0x" included, and wraps like it. A fraction is summed digit by digit,
 * so the result can differ in its last place from a correctly rounded conversion; WqScan_Float keeps the divisor of a
 * digit in 32 bits. An exponent, "e" or "E", is read only behind a fraction of other digits than a single 0: "1.5e+02"
 * is 150, while "1e+02" and "1.0e+02" read 1 and stop on the e.
 *
 * The byte behind the e is taken as the exponent's sign whatever it is; with any other byte than "+" or "-" there,
 * WqScan_Float takes the exponent as negative and WqScan_Double as positive. The exponent itself is again a number of
 * this form, so that it may have a fraction and an exponent of its own, to a depth of 64; deeper ones are left unread.
 * A text that ends behind the e has no exponent.
 *
 * value: receives the number; 0 without digits. */
WQ_API const char *WqScan_Float(const char *cursor, float *value);
WQ_API const char *WqScan_Double(const char *cursor, double *value);

/* Reads a string, quoted or plain. A plain one ends in front of a comma, a quoted one behind its closing quote; both
 * end at the NUL. A doubled quote is one quote, also in a plain string, where a single quote ends the string. A
 * backslash with a quote, a backslash, n or r behind it is that character, with n as line feed and r as carriage
 * return; any other backslash is itself. Double-byte characters are kept together. Line ends don't end a string.
 * dst: as large as what is left of the text, with its NUL. */
WQ_API const char *WqScan_String(const char *cursor, char *dst);

/* Reads "left,top,right,bottom", each as WqScan_Int reads it, with white space before or behind the commas.
 * Bad input: the given cursor is returned; values in front of the fault are stored. */
WQ_API const char *WqScan_Rect(const char *cursor, RECT *rect);

/* Read two numbers with a comma between them, in parentheses or without.
 * Bad input: the given cursor is returned; values in front of the fault are stored. */
WQ_API const char *WqScan_Size(const char *cursor, SIZE *size);
WQ_API const char *WqScan_Point(const char *cursor, POINT *point);

/* Result: the cursor behind any white space, line ends included. */
WQ_API const char *WqScan_Space(const char *cursor);

/* Steps over a comma, and over white space in front of it, not behind it. Without a comma only the white space goes. */
WQ_API const char *WqScan_Conma(const char *cursor);

/* Moves behind the next line end, a line feed with or without a carriage return before it, or to the NUL. */
WQ_API const char *WqScan_SkipLine(const char *cursor);

/* Skips white space once, then any run of line ends, comments from two slashes to the line's end, and block comments;
 * the opener's star may be the closer's. Blanks behind a comment stop it.
 * Bad input: a block comment without an end runs to the NUL. */
WQ_API const char *WqScan_Comment(const char *cursor);

/* Skips white space once, then any run of line ends and of comments from a semicolon to the line's end. */
WQ_API const char *WqScan_Comment2(const char *cursor);

/* ---- WqFmtStr: names from templates ------------------------------------------------------------------------------
 *
 * A template is a text in which a keyword behind "#" stands for a field of the record: "#filetime", "#name", "#no",
 * "#sequence", "#serial", "#specification", "#title"; "##" is one "#", and a "#" at the end is dropped. The first
 * letter of a keyword is lower-case, the others have any case. Keywords are matched from their beginning, so that what
 * follows is ordinary text again.
 *
 * "#no" takes digits and at most one point behind it as width and precision: with a number of 7, "#no03" gives "007".
 * A point right behind the number is therefore written twice: "#no..wav".
 *
 * Both functions may run on several threads at once. */

typedef struct WqFmtStr {
  int32_t number;
  char name[256];
  char serial[256];
  char filetime[256]; /* as a rule a date and a time; each "/" and ":" comes out as "_" */
  char specification[256];
  char sequence[256];
  char title[256];
} WqFmtStr;

/* Expands a template. At an unknown keyword the expansion stops, and the text in front of it stays.
 * dst: has room for the expanded text and a NUL; null runs through the template without output.
 * unused: has no effect.
 * record: may be null when dst is.
 * Result: the number of bytes written; 0 without dst.
 * Bad input: a number comes out with at most 1023 characters whatever its width; of a width part the first 253
 * characters count. A field without a NUL ends with its array. */
WQ_API int32_t WqFmtStr_Trans(char *dst, const char *format, uint32_t unused, const WqFmtStr *record);

/* Result: 1 when every keyword of the template is known, else 0.
 * unused: has no effect. */
WQ_API int WqFmtStr_Check(const char *format, uint32_t unused);

#ifdef __cplusplus
}
#endif

#endif
