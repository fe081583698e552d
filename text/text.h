/* Text: strings, the scanner that reads values out of text, and name templates. */
#ifndef WQ_TEXT_TEXT_H
#define WQ_TEXT_TEXT_H

#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqStr: strings ----------------------------------------------------------------------------------------------
 *
 * Most functions return the number of bytes written, without the NUL. So a text is built by adding results to a write
 * pointer. Only WqStr_nCopy gets the size of its destination. For all others dst must have room for the result and its
 * NUL. A quoted form may have twice the length of its source plus four bytes. WqStr_Int needs 12 bytes, WqStr_Rect 48,
 * WqStr_Size 24. dst and src must not overlap.
 *
 * Strings are handled byte by byte: cuts, comparisons and searches may begin with the second byte of a character. Only
 * WqStr_DelEsc and WqScan_String keep double-byte characters whole.
 *
 * All functions may run on several threads at once. */

/* Result: the length of src. */
WQ_API int32_t WqStr_Len(const char *src);

/* Copies a string.
 * Result: the length of src. */
WQ_API int32_t WqStr_Copy(char *dst, const char *src);

/* Copies at most n bytes, including the NUL. If the first n bytes of src have no NUL, dst gets no NUL either, and a
 * caller that needs one sets it before.
 * Result: the number of bytes copied, without a NUL.
 * Bad input: n below 1 gives 0 and leaves dst unchanged. */
WQ_API int32_t WqStr_nCopy(char *dst, const char *src, int32_t n);

/* Writes src in double quotes, without changes inside.
 * Result: the length of src plus 2. */
WQ_API int32_t WqStr_CopyD(char *dst, const char *src);

/* Appends src at the end of dst.
 * Result: the length of the joined string. */
WQ_API int32_t WqStr_Cat(char *dst, const char *src);

/* Writes a followed by b.
 * Result: the length of both together. */
WQ_API int32_t WqStr_CopyCat(char *dst, const char *a, const char *b);

/* Copies src without any byte that equals the first byte of chars. If the second byte of chars is the same byte, a
 * doubled byte in src becomes a single one instead. With two double quotes as chars, quotes are removed and doubled
 * quotes become single ones.
 * src: here the parameter before dst.
 * Result: the number of bytes written. With empty chars src is copied unchanged. */
WQ_API int32_t WqStr_Remove(const char *src, char *dst, const char *chars);

/* Result: 1 when both strings are equal byte for byte, else 0. */
WQ_API int WqStr_Comp(const char *a, const char *b);

/* Result: 1 if both begin with the same n bytes, without a NUL among them; else 0, and also for n below 1. Neither
 * string is read past its NUL or past n bytes. */
WQ_API int WqStr_nComp(const char *a, const char *b, int32_t n);

/* Tells whether the first n bytes of pattern, none of them NUL, occur in text.
 * Result: 1 or 0; 0 for n of 0 and for an empty pattern. */
WQ_API int WqStr_Find(const char *text, const char *pattern, uint32_t n);

/* Writes the quoted form of src: in double quotes, with every double quote inside doubled, and a final backslash
 * doubled.
 * Result: the length of src, not the length written. */
WQ_API int32_t WqStr_AddEsc(char *dst, const char *src);

/* Reads a quoted form with doubled quotes inside. Leading white space is skipped. Double-byte characters are kept
 * whole. Without a closing quote the text ends at its NUL. Backslashes are copied unchanged, even a final one that
 * WqStr_AddEsc has doubled: only WqScan_String makes it single again.
 * dst: room for the content of src and a NUL.
 * Bad input: if src doesn't begin with a double quote, dst stays unchanged, without a NUL. */
WQ_API void WqStr_DelEsc(char *dst, const char *src);

/* Writes src for a settings file: in quoted form if src holds a double quote or a comma, else unchanged.
 * unused: has no effect.
 * Result: the length of src in both cases. */
WQ_API int32_t WqStr_CfgStr(char *dst, const char *src, uint32_t unused);

/* Writes a decimal number without leading zeros, with a minus sign if it is negative.
 * Result: the number of characters, 1 to 11. */
WQ_API int32_t WqStr_Int(char *dst, int32_t value);

/* Write the low 8, 16 or 32 bits as upper-case hexadecimal digits. Higher bits are ignored.
 * Result: 2, 4 or 8. */
WQ_API int32_t WqStr_Hex02(char *dst, int32_t value);
WQ_API int32_t WqStr_Hex04(char *dst, int32_t value);
WQ_API int32_t WqStr_Hex08(char *dst, int32_t value);

/* Write hexadecimal digits with "0x" in front. WqStr_Hex0x02 and WqStr_Hex02A are the same.
 * Result: 4, 6 or 10. */
WQ_API int32_t WqStr_Hex0x02(char *dst, int32_t value);
WQ_API int32_t WqStr_Hex02A(char *dst, int32_t value);
WQ_API int32_t WqStr_Hex04A(char *dst, int32_t value);
WQ_API int32_t WqStr_Hex08A(char *dst, int32_t value);

/* Writes "left,top,right,bottom" in decimal without blanks, in the form of WqScan_Rect.
 * Result: the number of characters. */
WQ_API int32_t WqStr_Rect(char *dst, const RECT *rect);

/* Write the two values with a comma between them, in the form of WqScan_Size and WqScan_Point.
 * Result: the number of characters. */
WQ_API int32_t WqStr_Size(char *dst, const SIZE *size);
WQ_API int32_t WqStr_Point(char *dst, const POINT *point);

/* Formatted print of the C library, without a limit: dst must have room for the whole text.
 * Result: the number of characters; 0, with an empty dst, if the C library refuses the format. */
WQ_API int32_t WqStr_Format(char *dst, const char *format, ...) WQ_PRINTF(2, 3);

/* ---- WqScan: reading values out of text --------------------------------------------------------------------------
 *
 * Every function takes a cursor, a pointer into a text. It stores the value it reads and returns the new cursor, which
 * never passes the text's NUL. Only the cursor tells how much was read. If counted digits, a rectangle or a size can't
 * be read, the result is the given cursor.
 *
 * White space is the bytes 0x09 to 0x0D, the blank, and the double-byte blank 0x81 0x40. All functions skip it first,
 * except WqScan_SkipLine, and WqScan_Conma, which looks for its comma before.
 *
 * A hexadecimal prefix is "0x" with a lower-case x; digits may have either case.
 *
 * All functions may run on several threads at once. */

/* Reads a whole number: an optional sign, then decimal digits, or "0x" and hexadecimal digits. Any number of digits is
 * read; the value wraps at 32 bits. Without digits the value is 0, and the cursor stands behind white space, sign and
 * prefix.
 * value: receives the number. */
WQ_API const char *WqScan_Int(const char *cursor, int32_t *value);

/* Like WqScan_Int, storing the low 16 bits. */
WQ_API const char *WqScan_Short(const char *cursor, int16_t *value);
WQ_API const char *WqScan_UShort(const char *cursor, uint16_t *value);

/* Like WqScan_Int, storing the low 8 bits. */
WQ_API const char *WqScan_Byte(const char *cursor, uint8_t *value);

/* Read exactly one, two or n decimal digits, without sign. Further digits stay unread. The value wraps at 32 bits. For
 * n below 1 the value is 0, and the result is the cursor behind the white space.
 * Bad input: with too few digits nothing is stored, and the result is the given cursor. */
WQ_API const char *WqScan_Dec1(const char *cursor, int32_t *value);
WQ_API const char *WqScan_Dec2(const char *cursor, int32_t *value);
WQ_API const char *WqScan_DecN(const char *cursor, int32_t *value, int32_t n);

/* Reads exactly two hexadecimal digits, without prefix.
 * Bad input: with too few digits 0 is stored, and the cursor stands on the byte that is no digit. */
WQ_API const char *WqScan_HexByte(const char *cursor, uint8_t *value);

/* Read up to 4 or 8 hexadecimal digits, without prefix; 0 if there is none. */
WQ_API const char *WqScan_HexWord(const char *cursor, uint16_t *value);
WQ_API const char *WqScan_HexDword(const char *cursor, uint32_t *value);

/* Reads up to 16 hexadecimal digits, with or without prefix. The last eight count; 0 if there is no digit. */
WQ_API const char *WqScan_HexLong(const char *cursor, uint32_t *value);

/* Read a number with an optional fraction and exponent.
 *
 * The integer part has the form of WqScan_Int, "0x" included, and wraps like it. A fraction is summed digit by digit,
 * so the last place may differ from a correctly rounded result; WqScan_Float keeps the divisor of a digit in 32 bits.
 * An exponent, "e" or "E", is only read behind a fraction, and not if the fraction is a single 0: "1.5e+02" is 150,
 * while "1e+02" and "1.0e+02" give 1 and stop at the e.
 *
 * The byte behind the e is taken as the exponent's sign, whatever it is. If it is neither "+" nor "-", WqScan_Float
 * takes the exponent as negative and WqScan_Double as positive. The exponent is again a number of this form. So it may
 * have a fraction and its own exponent, to a depth of 64; deeper exponents stay unread. A text that ends behind the e
 * has no exponent.
 *
 * value: receives the number; 0 without digits. */
WQ_API const char *WqScan_Float(const char *cursor, float *value);
WQ_API const char *WqScan_Double(const char *cursor, double *value);

/* Reads a string, quoted or plain. A plain string ends before a comma, a quoted one behind its closing quote, and both
 * at the NUL. A doubled quote stands for one quote, even in a plain string, where a single quote ends the string. A
 * backslash before a quote, a backslash, n or r stands for that character; n is a line feed and r a carriage return.
 * Any other backslash stands for itself. Double-byte characters are kept whole. Line ends don't end a string.
 * dst: room for the rest of the text, with its NUL. */
WQ_API const char *WqScan_String(const char *cursor, char *dst);

/* Reads "left,top,right,bottom", each in the form of WqScan_Int, with white space before or behind the commas.
 * Bad input: the result is the given cursor; values before the fault are stored. */
WQ_API const char *WqScan_Rect(const char *cursor, RECT *rect);

/* Read two numbers with a comma between them, in parentheses or without.
 * Bad input: the result is the given cursor; values before the fault are stored. */
WQ_API const char *WqScan_Size(const char *cursor, SIZE *size);
WQ_API const char *WqScan_Point(const char *cursor, POINT *point);

/* Result: the cursor behind any white space, line ends included. */
WQ_API const char *WqScan_Space(const char *cursor);

/* Skips a comma and white space before it, but none behind it. Without a comma only white space is skipped. */
WQ_API const char *WqScan_Conma(const char *cursor);

/* Moves behind the next line feed, or to the NUL. */
WQ_API const char *WqScan_SkipLine(const char *cursor);

/* Skips white space once, then any run of line ends, comments from two slashes to the end of the line, and block
 * comments. The star that opens a block comment may also close it. Blanks behind a comment end the run.
 * Bad input: a block comment without an end goes on to the NUL. */
WQ_API const char *WqScan_Comment(const char *cursor);

/* Skips white space once, then any run of line ends and of comments from a semicolon to the end of the line. */
WQ_API const char *WqScan_Comment2(const char *cursor);

/* ---- WqFmtStr: names from templates ------------------------------------------------------------------------------
 *
 * A template is a text in which "#" and a keyword stand for a field of the record: "#filetime", "#name", "#no",
 * "#sequence", "#serial", "#specification", "#title". "##" stands for one "#", and a "#" at the end is dropped. The
 * first letter of a keyword must be lower-case; the case of the others is ignored. Text directly behind a keyword is
 * ordinary text.
 *
 * Digits and at most one point behind "#no" are its width and precision: with number 7, "#no03" gives "007". So a point
 * that shall follow the number is written twice: "#no..wav".
 *
 * Both functions may run on several threads at once. */

typedef struct WqFmtStr {
  int32_t number;
  char name[256];
  char serial[256];
  char filetime[256]; /* usually a date and a time; "/" and ":" are written as "_" */
  char specification[256];
  char sequence[256];
  char title[256];
} WqFmtStr;

/* Expands a template. An unknown keyword ends the expansion; the text before it stays.
 * dst: room for the expanded text and a NUL; null for a run without output.
 * unused: has no effect.
 * record: may be null if dst is null.
 * Result: the number of bytes written; 0 without dst.
 * Bad input: a number has at most 1023 characters, whatever its width. Only the first 253 characters of a width part
 * count. A field without a NUL ends with its array. */
WQ_API int32_t WqFmtStr_Trans(char *dst, const char *format, uint32_t unused, const WqFmtStr *record);

/* Result: 1 if all keywords of the template are known, else 0.
 * unused: has no effect. */
WQ_API int WqFmtStr_Check(const char *format, uint32_t unused);

#ifdef __cplusplus
}
#endif

#endif
