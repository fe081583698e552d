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
 * Samples are bytes with a description; their values are not looked at. The stored bytes lie between data and
 * writePos. */

typedef struct WqPcmBuf {
  uint8_t *data;       /* owned by the record; null if there is none */
  uint32_t bits;       /* per sample */
  uint32_t sampleRate; /* samples per second and channel */
  uint32_t frames;     /* capacity in frames; a frame has one sample of every channel */
  uint32_t channels;
  uint32_t byteSize; /* capacity in bytes: bits / 8, rounded down, times frames times channels */
  uint8_t *writePos; /* where the next byte goes */
  uint8_t *endPos;   /* data + byteSize */
} WqPcmBuf;

/* Sets data to null and leaves all other fields as they are. */
WQ_API void WqPcmBuf_Init(WqPcmBuf *buf);

/* Makes a zeroed, empty block. An older block of the record is not freed.
 * sampleRate: in hertz. frames: capacity. bits: per sample.
 * Result: 1; 0 if memory is short, or the size is 0 or above 32 bits, and the record stays as it was. */
WQ_API int WqPcmBuf_Alloc(WqPcmBuf *buf, uint32_t sampleRate, uint32_t frames, uint32_t bits, uint32_t channels);

/* Zeroes the whole block and empties it. Without a block nothing happens. */
WQ_API void WqPcmBuf_initialize(WqPcmBuf *buf);

/* Grows the block. The stored bytes stay, and all bytes behind them are zero. A block that is large enough stays as it
 * is, and so does the frames field.
 * frames: the new capacity.
 * Result: 1; 0 if memory is short or the size is above 32 bits, and the record stays as it was. */
WQ_API int WqPcmBuf_Realloc(WqPcmBuf *buf, uint32_t frames);

/* Both free the block and set data to null; the other fields keep their values. */
WQ_API void WqPcmBuf_Term(WqPcmBuf *buf);
WQ_API void WqPcmBuf_Release(WqPcmBuf *buf);

/* Appends bytes.
 * size: in bytes, at most endPos - writePos.
 * Result: the bytes appended, fewer than size if the block has no room for all. */
WQ_API uint32_t WqPcmBuf_Add(WqPcmBuf *buf, const void *bytes, uint32_t size);

/* Gives another record its own block with the same capacity, format and stored bytes. The copy's writePos is the start
 * of the block, so that the block can be filled again.
 * destination: its old block, if any, is not freed.
 * Result: 1; 0 if memory is short or the source has no block, and the destination stays as it was. */
WQ_API int WqPcmBuf_Duplicate(const WqPcmBuf *source, WqPcmBuf *destination);

/* Writes the stored bytes to a file, without a header. Without stored bytes no file is made.
 * fileName: an existing file is replaced.
 * Result: the bytes written, fewer if the disk is full; 0 for an empty block and if the file can't be created. */
WQ_API uint32_t WqPcmBuf_WritePcmFile(const WqPcmBuf *buf, const char *fileName);

/* Writes the stored bytes to a WAV file. Without stored bytes no file is made, and the result is 1.
 * fileName: an existing file is replaced.
 * Result: 1; 0 if the file can't be created or the samples don't fit the disk. */
WQ_API int WqPcmBuf_WriteWavFile(const WqPcmBuf *buf, const char *fileName);

/* Makes a block for the size in a WAV file's header, and reads the samples into it. Of a file that is shorter than its
 * header says, all existing samples are read. WqSoundFileWav_open describes the accepted files.
 * buf: an empty record; an older block is not freed.
 * Result: the bytes read. 0 without a new block if the file is refused, its header has no samples, or memory is short;
 * 0 with an empty new block if the file ends behind its header.
 * Bad input: a header with a blockAlign of 0 is refused. The block has dataSize / blockAlign frames of the header's
 * bits and channels. If that is less than dataSize, reading ends with the block. */
WQ_API uint32_t WqPcmBuf_ReadWavFile(WqPcmBuf *buf, const char *fileName);

/* ---- WqSoundFileWav: a WAV or raw file as a stream ---------------------------------------------------------------
 *
 * RIFF/WAVE as described in "Multimedia Programming Interface and Data Specifications 1.0" (IBM and Microsoft, 1991),
 * in the form of measuring applications: integer PCM, one or two channels. Numbers are little-endian. Samples are plain
 * bytes here.
 *
 * The caller reads and sets the fields. A writer that knows the size beforehand stores dataSize, calls
 * WqSoundFileWav_writeHeader and writes the samples. Otherwise the writer opens with both flags set, writes the
 * samples, stores dataSize, and calls WqSoundFileWav_writeHeader last. Closing writes no size. */

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

/* Does nothing; WqSoundFileWav_close closes an open file. */
WQ_API void WqSoundFileWav_term(WqSoundFileWav *wav);

/* Stores the format. bytesPerSec and blockAlign are computed from bits / 8, rounded down.
 * sampleRate: in hertz. bits, channels: the low 16 bits are kept. */
WQ_API void WqSoundFileWav_setFormat(WqSoundFileWav *wav, uint32_t sampleRate, uint32_t bits, uint32_t channels);

/* Opens a file by the record's flags. Writing replaces an existing file; with the header flag the stream then is at
 * offset 44, the place of the first sample. Reading without the header flag takes the file as raw samples: dataSize is
 * its length, and the format fields stay. Reading with the header flag reads the format into the record and leaves the
 * stream at the first sample.
 *
 * A header is accepted if the format chunk comes first, its tag is 1 (integer PCM), and it has 1 or 2 channels of 8, 16
 * or 32 bits. Then the word "data" is searched byte by byte, without regard to chunk sizes. A byte that breaks a match
 * is not looked at again, so "dadata" is missed. Sizes and rates are not checked.
 *
 * If the record has an open file, that file is closed first.
 *
 * Result: 1; 0 if the file can't be opened, its header is refused, it has no data chunk, or raw samples are 4 GB or
 * more. After a refused header the file is still open, and the record has the fields read so far: the caller must call
 * WqSoundFileWav_close.
 * Bad input: an empty name gives 0, and nothing else happens. */
WQ_API int WqSoundFileWav_open(WqSoundFileWav *wav, const char *fileName);

/* Moves the stream to offset 44, whatever the file holds. A header of WqSoundFileWav_writeHeader ends there.
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

/* Writes a header of 44 bytes, from the record's fields, at the start of the file. The stream is at 44 afterwards.
 * Result: 1, even if the disk is full; 0 without an open file. */
WQ_API int WqSoundFileWav_writeHeader(WqSoundFileWav *wav);

/* Closes the file. Without an open file nothing happens. */
WQ_API void WqSoundFileWav_close(WqSoundFileWav *wav);

/* ---- WqUnit: levels and times ------------------------------------------------------------------------------------
 *
 * Levels: dBV relative to 1 V, dBu relative to the square root of 0.6 V, and dB relative to the range, the measuring
 * range in force, one value for the process. All functions are formulas of 64-bit floats without checks: a level of 0 V
 * is minus infinity, and a division by 0 gives infinity or NaN. */

/* Kinds of levels for WqUnit_dBV; any other kind counts as WQ_UNIT_DBV. */
#define WQ_UNIT_DB_RANGE 1u /* dB relative to the range */
#define WQ_UNIT_DBU 2u
#define WQ_UNIT_DBV 3u

/* Sets or gives the range, in volts. It is 1.0 when the program starts; WqMain_Init and WqMain_Term don't change it.
 * Threads: the range may only be set while no other thread converts. */
WQ_API void WqUnit_SetRange(double range);
WQ_API double WqUnit_GetRange(void);

/* Result: value / divisor. The process's range has no effect. */
WQ_API double WqUnit_RetRange(double value, double divisor);

/* Result: a level in dBV as dB relative to the range: level - 20 log10(range). */
WQ_API double WqUnit_RetRange_dBV(double level);

/* Result: value / range. */
WQ_API double WqUnit_RetRange_Power(double value);

/* Result: a level in dBV as volts: the square root of 10 ^ (level * 0.1). */
WQ_API double WqUnit_dBVToV(double level);

/* Result: volts as dBV: 20 log10(volts). */
WQ_API double WqUnit_VTodBV(double volts);

/* Result: a level of one of the kinds above as dBV. The offset from dBu is 2.218487024307251.
 * kind: only the low 8 bits count. */
WQ_API double WqUnit_dBV(double level, uint32_t kind);

/* Convert between samples and milliseconds on a fixed time base of 16384 samples a second. The rate of a PCM buffer has
 * no effect. Milliseconds become the nearest sample: ms * 16.384 + 0.5, truncated.
 * Bad input: a result beyond 32 bits gives its low 32 bits; beyond 64 bits, and for NaN, it is 0. */
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

/* Round down, or up, to an integer: the value is truncated, and 1 is subtracted or added if that is not yet the result.
 * Bad input: a value beyond 32 bits is truncated to its low 32 bits, a value beyond 64 bits, and NaN, to 0. Then 1 is
 * subtracted or added as before, if the value lies beyond the truncated one. */
WQ_API int32_t WqMath_FloorInt(double value);
WQ_API int32_t WqMath_CeilInt(double value);

#ifdef __cplusplus
}
#endif

#endif
