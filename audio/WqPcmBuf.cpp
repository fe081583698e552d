// Blocks of samples, and their files.

#include "audio/audio.h"

#include "audio/audio_private.h"
#include "frame/memory.h"

#include <algorithm>
#include <cstdio>

namespace {

uint32_t storedSize(const WqPcmBuf *buf) { return buf->data ? static_cast<uint32_t>(buf->writePos - buf->data) : 0; }

// Writes the stored bytes and closes the file.
// Result: the bytes that reached the file; 0 if the stream's buffer could not be written.
uint32_t writeStored(const WqPcmBuf *buf, WqSoundFileWav *wav) {
  uint32_t written = WqSoundFileWav_write(wav, buf->data, storedSize(buf));
  if (std::fflush(wav->file) != 0) written = 0;
  WqSoundFileWav_close(wav);
  return written;
}

// Reads the samples of an open file into a new block.
uint32_t readSamples(WqPcmBuf *buf, WqSoundFileWav *wav) {
  if (wav->blockAlign == 0) return 0;
  const uint32_t frames = wav->dataSize / wav->blockAlign;
  if (!WqPcmBuf_Alloc(buf, wav->sampleRate, frames, wav->bits, wav->channels)) return 0;
  const uint32_t count = WqSoundFileWav_read(wav, buf->data, std::min(wav->dataSize, buf->byteSize));
  buf->writePos = buf->data + count;
  return count;
}

} // namespace

void WqPcmBuf_Init(WqPcmBuf *buf) { buf->data = nullptr; }

int WqPcmBuf_Alloc(WqPcmBuf *buf, uint32_t sampleRate, uint32_t frames, uint32_t bits, uint32_t channels) {
  const uint64_t size = wqPcmSize(bits, frames, channels);
  if (size > UINT32_MAX) return 0;
  auto *data = static_cast<uint8_t *>(WqMem_Alloc(static_cast<size_t>(size)));
  if (!data) return 0;
  *buf = {data, bits, sampleRate, frames, channels, static_cast<uint32_t>(size), data, data + size};
  return 1;
}

void WqPcmBuf_initialize(WqPcmBuf *buf) {
  if (!buf->data) return;
  WqMem_Zero(buf->data, buf->byteSize);
  buf->writePos = buf->data;
}

int WqPcmBuf_Realloc(WqPcmBuf *buf, uint32_t frames) {
  const uint64_t wanted = wqPcmSize(buf->bits, frames, buf->channels);
  if (wanted <= buf->byteSize) return 1;
  if (wanted > UINT32_MAX) return 0;
  const uint32_t stored = storedSize(buf);
  auto *data = static_cast<uint8_t *>(WqMem_Realloc(buf->data, static_cast<size_t>(wanted)));
  if (!data) return 0;
  buf->data = data;
  buf->byteSize = static_cast<uint32_t>(wanted);
  buf->frames = frames;
  buf->writePos = data + stored;
  buf->endPos = data + wanted;
  WqMem_Zero(buf->writePos, buf->byteSize - stored);
  return 1;
}

void WqPcmBuf_Term(WqPcmBuf *buf) {
  WqMem_Free(buf->data);
  buf->data = nullptr;
}

void WqPcmBuf_Release(WqPcmBuf *buf) { WqPcmBuf_Term(buf); }

uint32_t WqPcmBuf_Add(WqPcmBuf *buf, const void *bytes, uint32_t size) {
  if (!buf->data || size == 0) return 0;
  size = std::min(size, static_cast<uint32_t>(buf->endPos - buf->writePos));
  WqMem_Copy(buf->writePos, bytes, size);
  buf->writePos += size;
  return size;
}

int WqPcmBuf_Duplicate(const WqPcmBuf *source, WqPcmBuf *destination) {
  if (!source->data) return 0;
  auto *data = static_cast<uint8_t *>(WqMem_Alloc(source->byteSize));
  if (!data) return 0;
  WqMem_Copy(data, source->data, storedSize(source));
  *destination = *source;
  destination->data = data;
  destination->writePos = data;
  destination->endPos = data + source->byteSize;
  return 1;
}

uint32_t WqPcmBuf_WritePcmFile(const WqPcmBuf *buf, const char *fileName) {
  if (storedSize(buf) == 0) return 0;
  WqSoundFileWav wav;
  WqSoundFileWav_init(&wav, 0, 1);
  return WqSoundFileWav_open(&wav, fileName) ? writeStored(buf, &wav) : 0;
}

int WqPcmBuf_WriteWavFile(const WqPcmBuf *buf, const char *fileName) {
  const uint32_t stored = storedSize(buf);
  if (stored == 0) return 1;
  WqSoundFileWav wav;
  WqSoundFileWav_init(&wav, 0, 1);
  WqSoundFileWav_setFormat(&wav, buf->sampleRate, buf->bits, buf->channels);
  if (!WqSoundFileWav_open(&wav, fileName)) return 0;
  wav.dataSize = stored;
  WqSoundFileWav_writeHeader(&wav);
  return writeStored(buf, &wav) == stored;
}

uint32_t WqPcmBuf_ReadWavFile(WqPcmBuf *buf, const char *fileName) {
  WqSoundFileWav wav;
  WqSoundFileWav_init(&wav, 1, 0);
  const uint32_t count = WqSoundFileWav_open(&wav, fileName) ? readSamples(buf, &wav) : 0;
  WqSoundFileWav_close(&wav);
  return count;
}
