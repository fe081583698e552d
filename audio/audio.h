/* Audio data: sample blocks, WAV files, level and time units, numeric functions. */
#ifndef WQ_AUDIO_AUDIO_H
#define WQ_AUDIO_AUDIO_H

#include "frame/types.h"

#include <stdio.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqPcmBuf: a block of samples --------------------------------------------------------------------------------
 *
 * Samples are bytes with a description; nothing here looks at a sample. What is stored runs from data to writePos. */

typedef struct WqPcmBuf {
  uint8_t *data;       /* owned by the record; null when there is none */
  uint32_t bits;       /* per sample */
  uint32_t sampleRate; /* samples per second and channel */
  uint32_t frames;     /* capacity in frames, one sample of every channel each */
  uint32_t channels;
  uint32_t byteSize; /* capacity in bytes: bits / 8, rounded down, times frames times channels */
  uint8_t *writePos; /* where the next byte goes */
  uint8_t *endPos;   /* data + byteSize */
} WqPcmBuf;

/* Sets data to null and leaves all other fields as they are. */
WQ_API void WqPcmBuf_Init(WqPcmBuf *buf);

/* Makes a zeroed, empty block. A block that the record holds already is not freed.
 * sampleRate: in hertz. frames: capacity. bits: per sample.
 * Result: 1; 0 when memory is short, or the size is 0 or above 32 bits, and the record stays as it was. */
WQ_API int WqPcmBuf_Alloc(WqPcmBuf *buf, uint32_t sampleRate, uint32_t frames, uint32_t bits, uint32_t channels);

/* Zeroes the whole block and empties it. Without a block nothing happens. */
WQ_API void WqPcmBuf_initialize(WqPcmBuf *buf);

/* Grows the block; what is stored stays, all bytes behind it are zero. A block that is large enough stays as it is, with
 * the frames field too.
 * frames: the new capacity.
 * Result: 1; 0 when memory is short or the size is above 32 bits, and the record stays as it was. */
WQ_API int WqPcmBuf_Realloc(WqPcmBuf *buf, uint32_t frames);

/* Both free the block and set data to null; the other fields keep their values. */
WQ_API void WqPcmBuf_Term(WqPcmBuf *buf);
WQ_API void WqPcmBuf_Release(WqPcmBuf *buf);

/* Appends bytes.
 * size: in bytes, at most endPos - writePos.
 * Result: the bytes appended: size, or what there was room for. */
WQ_API uint32_t WqPcmBuf_Add(WqPcmBuf *buf, const void *bytes, uint32_t size);

/* Gives another record a block of its own with the same capacity, format and stored bytes. The copy's writePos stands
 * at the start of the block, so that it can be filled anew.
 * destination: its old block, if any, is not freed.
 * Result: 1; 0 when memory is short or the source has no block, and the destination stays as it was. */
WQ_API int WqPcmBuf_Duplicate(const WqPcmBuf *source, WqPcmBuf *destination);

/* Writes the stored bytes to a file, without a header. With nothing stored no file is made.
 * fileName: an existing file is replaced.
 * Result: the bytes written, fewer when the disk is full; 0 for an empty block and when the file can't be created. */
WQ_API uint32_t WqPcmBuf_WritePcmFile(const WqPcmBuf *buf, const char *fileName);

/* Writes the stored bytes to a WAV file. With nothing stored no file is made, and that is a success.
 * fileName: an existing file is replaced.
 * Result: 1; 0 when the file can't be created or the samples don't fit the disk. */
WQ_API int WqPcmBuf_WriteWavFile(const WqPcmBuf *buf, const char *fileName);

/* Makes a block of the size that a WAV file's header tells, and reads the samples into it. A file that is shorter than
 * its header says gives what it holds. Which files are accepted is told at WqSoundFileWav_open.
 * buf: an empty record; a block that it holds is not freed.
 * Result: the bytes read. 0 when the file is refused, its header tells of no samples, or memory is short, and the
 * record has no new block then; 0 with an empty new block when the file ends behind its header.
 * Bad input: a header with a blockAlign of 0 is refused. The block has dataSize / blockAlign frames of the header's
 * bits and channels; where that is less than dataSize, reading ends with the block. */
WQ_API uint32_t WqPcmBuf_ReadWavFile(WqPcmBuf *buf, const char *fileName);

/* ---- WqSoundFileWav: a WAV or raw file as a stream ---------------------------------------------------------------
 *
 * RIFF/WAVE as described in "Multimedia Programming Interface and Data Specifications 1.0" (IBM and Microsoft, 1991),
 * in the form that measuring applications write: integer PCM, one or two channels. Numbers in
 * it are little-endian, and samples are taken as the bytes that they are.
 *
 * The caller reads and sets the fields. A writer that knows its size stores dataSize, calls WqSoundFileWav_writeHeader
 * and writes; one that learns it on the way opens with both flags set, writes, stores dataSize, and calls
 * WqSoundFileWav_writeHeader last. Closing writes no size. */

typedef struct WqSoundFileWav {
  FILE *file;          /* null when closed */
  uint32_t header;     /* not 0: the file has a WAV header */
  uint32_t write;      /* not 0: writing; 0: reading */
  uint32_t sampleRate; /* samples per second and channel */
  uint16_t channels;
  uint16_t bits;     /* per sample */
  uint32_t dataSize; /* bytes of sample data */
  uint32_t bytesPerSec;
  uint16_t blockAlign; /* bytes per frame */
} WqSoundFileWav;

/* Zeroes the record and stores the two flags. */
WQ_API void WqSoundFileWav_init(WqSoundFileWav *wav, uint32_t header, uint32_t write);

/* Does nothing; an open file is closed with WqSoundFileWav_close. */
WQ_API void WqSoundFileWav_term(WqSoundFileWav *wav);

/* Stores the format, with bytesPerSec and blockAlign worked out from bits / 8, rounded down.
 * sampleRate: in hertz. bits, channels: the low 16 bits are kept. */
WQ_API void WqSoundFileWav_setFormat(WqSoundFileWav *wav, uint32_t sampleRate, uint32_t bits, uint32_t channels);

/* Opens a file by the record's flags. Writing replaces an existing file; with the header flag the stream then stands at
 * offset 44, the place of the first sample. Reading without the header flag takes the file as raw samples: dataSize is
 * its length, the format fields stay. Reading with the header flag reads the format into the record and leaves the
 * stream on the first sample.
 *
 * A header is accepted when the format chunk comes first, its tag is 1 (integer PCM), and it tells 1 or 2 channels of
 * 8, 16 or 32 bits. Then the word "data" is searched byte by byte, without regard to chunk sizes; a byte that breaks a
 * match is not looked at again, so that "dadata" is missed. Neither sizes nor rates are checked.
 *
 * A file that the record has open is closed first.
 *
 * Result: 1; 0 when the file can't be opened, its header is refused, no data chunk is found before its end, or raw samples
 * are 4 GB or more. After a refused header the file is still open and the fields read so far stand in the record: the
 * caller calls WqSoundFileWav_close.
 * Bad input: an empty name gives 0, and nothing else happens. */
WQ_API int WqSoundFileWav_open(WqSoundFileWav *wav, const char *fileName);

/* Moves the stream to offset 44, behind a header as WqSoundFileWav_writeHeader writes it, whatever the file holds.
 * Result: 1; 0 without an open file. */
WQ_API int WqSoundFileWav_skipHeader(WqSoundFileWav *wav);

/* Reads sample bytes.
 * size: in bytes.
 * Result: the bytes read, fewer at the end of the file; 0 without an open file. */
WQ_API uint32_t WqSoundFileWav_read(WqSoundFileWav *wav, void *bytes, uint32_t size);

/* Writes sample bytes.
 * size: in bytes.
 * Result: the bytes written; 0 without an open file. */
WQ_API uint32_t WqSoundFileWav_write(WqSoundFileWav *wav, const void *bytes, uint32_t size);

/* Writes the header of 44 bytes, from the record's fields, at the start of the file. The stream then stands at 44.
 * Result: 1, also when the disk is full; 0 without an open file. */
WQ_API int WqSoundFileWav_writeHeader(WqSoundFileWav *wav);

/* Closes the file; without one nothing happens. */
WQ_API void WqSoundFileWav_close(WqSoundFileWav *wav);

/* ---- WqUnit: levels and times ------------------------------------------------------------------------------------
 *
 * Levels: dBV relative to 1 V, dBu relative to the square root of 0.6 V, and dB relative to the range, the one value of
 * the process that stands for the measuring range in force. All functions are formulas of 64-bit floats; nothing is
 * checked, so that a level of 0 V is minus infinity and a division by 0 gives infinity or no number. */

/* The kinds of WqUnit_dBV; every other kind counts as WQ_UNIT_DBV. */
#define WQ_UNIT_DB_RANGE 1u /* dB relative to the range */
#define WQ_UNIT_DBU 2u
#define WQ_UNIT_DBV 3u

/* Sets or gives the range, in volts. It is 1.0 when the program starts; WqMain_Init and WqMain_Term leave it alone.
 * Threads: the range is set while no other thread converts. */
WQ_API void WqUnit_SetRange(double range);
WQ_API double WqUnit_GetRange(void);

/* Result: value / divisor. The process's range takes no part. */
WQ_API double WqUnit_RetRange(double value, double divisor);

/* Result: a level in dBV as dB relative to the range: level - 20 log10(range). */
WQ_API double WqUnit_RetRange_dBV(double level);

/* Result: value / range. */
WQ_API double WqUnit_RetRange_Power(double value);

/* Result: a level in dBV as volts: the square root of 10 ^ (level * 0.1). */
WQ_API double WqUnit_dBVToV(double level);

/* Result: volts as dBV: 20 log10(volts). */
WQ_API double WqUnit_VTodBV(double volts);

/* Result: a level of one of the kinds above as dBV. From dBu the offset is 2.218487024307251.
 * kind: the low 8 bits count. */
WQ_API double WqUnit_dBV(double level, uint32_t kind);

/* Convert between samples and milliseconds on a time base of its own, 16384 samples in each second. The rate of a PCM
 * buffer plays no part. Milliseconds become the nearest sample: ms * 16.384 + 0.5, truncated.
 * Bad input: of a result beyond 32 bits the low 32 bits count; beyond 64 bits, and for no number, it is 0. */
WQ_API double WqUnit_SampleToMsec(uint32_t samples);
WQ_API int32_t WqUnit_MsecToSample(double milliseconds);

/* Convert between an attenuation in dB and percent: 0 dB is 100 percent, 20 dB are 10 percent. */
WQ_API double WqUnit_dBToPer(double decibels);
WQ_API double WqUnit_PerTodB(double percent);

/* ---- WqMath: numeric functions -----------------------------------------------------------------------------------
 *
 * All may run on several threads at once. */

/* Result: the absolute value; the most negative value stays as it is. */
WQ_API int32_t WqMath_Abs(int32_t value);

/* The C library's functions of these names, on 64-bit floats; angles in radians. */
WQ_API double WqMath_Fabs(double value);
WQ_API double WqMath_Floor(double value);
WQ_API double WqMath_Ceil(double value);
WQ_API double WqMath_Log10(double value);
WQ_API double WqMath_Pow(double base, double exponent);
WQ_API double WqMath_Sqrt(double value);
WQ_API double WqMath_Cos(double radians);
WQ_API double WqMath_Sin(double radians);

/* Round downward, and upward, to an integer: the value is truncated, and moved by 1 where it lay beyond.
 * Bad input: of a value beyond 32 bits the low 32 bits of the truncated integer count, of one beyond 64 bits, and of no
 * number, 0; a value that lies beyond that moves it by 1 too. */
WQ_API int32_t WqMath_FloorInt(double value);
WQ_API int32_t WqMath_CeilInt(double value);

#ifdef __cplusplus
}
#endif

#endif
