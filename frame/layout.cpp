// In 32-bit memory every record has its documented layout; a build for such a target holds it to that here.

#include "wq.h"

#include <cstddef>

#define RECORD32(type, size) static_assert(sizeof(void *) != 4 || sizeof(type) == (size), #type)
#define FIELD32(type, field, offset)                                                                                   \
  static_assert(sizeof(void *) != 4 || offsetof(type, field) == (offset), #type "." #field)

RECORD32(WqWord, 4);

RECORD32(WqList, 12);
FIELD32(WqList, prev, 4);
FIELD32(WqList, next, 8);
RECORD32(WqHash, 8);
FIELD32(WqHash, bucketCount, 4);
RECORD32(WqHashEntry, 8);
FIELD32(WqHashEntry, key, 4);
RECORD32(WqElem, 20);
FIELD32(WqElem, value, 8);
FIELD32(WqElem, extra, 12);
RECORD32(WqElems, 16);
FIELD32(WqElems, state, 4);
FIELD32(WqElems, number, 8);
FIELD32(WqElems, cellCount, 12);
RECORD32(WqMap, 12);
FIELD32(WqMap, tail, 4);
FIELD32(WqMap, count, 8);
RECORD32(WqTree, 28);
FIELD32(WqTree, parent, 4);
FIELD32(WqTree, firstChild, 8);
FIELD32(WqTree, lastChild, 12);
FIELD32(WqTree, prev, 16);
FIELD32(WqTree, next, 20);
FIELD32(WqTree, childCount, 24);
RECORD32(WqStack, 8);
FIELD32(WqStack, count, 4);
RECORD32(WqRingBuf, 20);
FIELD32(WqRingBuf, count, 4);
FIELD32(WqRingBuf, writeIx, 8);
FIELD32(WqRingBuf, readIx, 12);
FIELD32(WqRingBuf, capacity, 16);

RECORD32(WqFmtStr, 4 + 6 * 256);
FIELD32(WqFmtStr, name, 4);
FIELD32(WqFmtStr, serial, 4 + 256);
FIELD32(WqFmtStr, filetime, 4 + 2 * 256);
FIELD32(WqFmtStr, specification, 4 + 3 * 256);
FIELD32(WqFmtStr, sequence, 4 + 4 * 256);
FIELD32(WqFmtStr, title, 4 + 5 * 256);

RECORD32(WqFile, 272);
FIELD32(WqFile, mapping, 4);
FIELD32(WqFile, view, 8);
FIELD32(WqFile, path, 12);
RECORD32(WqCfg, 4 * 260 + 4 + 256);
FIELD32(WqCfg, tmpPath, 260);
FIELD32(WqCfg, dir, 520);
FIELD32(WqCfg, fileName, 780);
FIELD32(WqCfg, mode, 1040);
FIELD32(WqCfg, sect, 4 * 260 + 4);

RECORD32(WqTime, 28);
FIELD32(WqTime, tick, 16);
FIELD32(WqTime, prevTick, 20);
FIELD32(WqTime, elapsed, 24);
RECORD32(WqSync, 28);
FIELD32(WqSync, state, 24);
RECORD32(WqMutex, 264);
FIELD32(WqMutex, name, 4);
RECORD32(WqSignal, 4);
RECORD32(WqSemaphore, 12);

RECORD32(WqPcmBuf, 32);
FIELD32(WqPcmBuf, bits, 4);
FIELD32(WqPcmBuf, sampleRate, 8);
FIELD32(WqPcmBuf, frames, 12);
FIELD32(WqPcmBuf, channels, 16);
FIELD32(WqPcmBuf, byteSize, 20);
FIELD32(WqPcmBuf, writePos, 24);
FIELD32(WqPcmBuf, endPos, 28);
RECORD32(WqSoundFileWav, 32);
FIELD32(WqSoundFileWav, header, 4);
FIELD32(WqSoundFileWav, write, 8);
FIELD32(WqSoundFileWav, sampleRate, 12);
FIELD32(WqSoundFileWav, channels, 16);
FIELD32(WqSoundFileWav, bits, 18);
FIELD32(WqSoundFileWav, dataSize, 20);
FIELD32(WqSoundFileWav, bytesPerSec, 24);
FIELD32(WqSoundFileWav, blockAlign, 28);

RECORD32(POINT, 8);
RECORD32(SIZE, 8);
RECORD32(RECT, 16);

RECORD32(WqMsg, 16);
FIELD32(WqMsg, msg, 4);
FIELD32(WqMsg, wParam, 8);
FIELD32(WqMsg, lParam, 12);
RECORD32(WqWheel, 16);
FIELD32(WqWheel, x, 4);
FIELD32(WqWheel, y, 8);
FIELD32(WqWheel, keys, 12);
RECORD32(WqWndParam, 172);
FIELD32(WqWndParam, exStyle, 4);
FIELD32(WqWndParam, className, 8);
FIELD32(WqWndParam, title, 8 + 81);
RECORD32(WqWnd, 136);
FIELD32(WqWnd, rect, 4);
FIELD32(WqWnd, id, 20);
FIELD32(WqWnd, hwnd, 24);
FIELD32(WqWnd, parent, 28);
FIELD32(WqWnd, userProc, 32);
FIELD32(WqWnd, result, 36);
FIELD32(WqWnd, dependants, 40);
FIELD32(WqWnd, msgReq, 44);
FIELD32(WqWnd, maxRect, 48);
FIELD32(WqWnd, minRect, 64);
FIELD32(WqWnd, snapLeft, 80);
FIELD32(WqWnd, snapTop, 84);
FIELD32(WqWnd, snapRight, 88);
FIELD32(WqWnd, snapBottom, 92);
FIELD32(WqWnd, marginLeft, 96);
FIELD32(WqWnd, marginTop, 100);
FIELD32(WqWnd, marginRight, 104);
FIELD32(WqWnd, marginBottom, 108);
FIELD32(WqWnd, bkgrndBmp, 112);
FIELD32(WqWnd, bkgrndSize, 116);
FIELD32(WqWnd, bkgrndPos, 124);
FIELD32(WqWnd, createParam, 132);
RECORD32(WqCmd, 16);
FIELD32(WqCmd, words, 4);
RECORD32(WqMsgLp, 4);
RECORD32(WqTimerElem, 24);
FIELD32(WqTimerElem, proc, 4);
FIELD32(WqTimerElem, userData, 8);
FIELD32(WqTimerElem, lastTick, 12);
FIELD32(WqTimerElem, elapsed, 16);
FIELD32(WqTimerElem, period, 20);
RECORD32(WqTimerState, 12);
FIELD32(WqTimerState, running, 4);
FIELD32(WqTimerState, timerId, 8);

RECORD32(WqMemBlockElem, 12);
FIELD32(WqMemBlockElem, cursor, 4);
FIELD32(WqMemBlockElem, size, 8);
RECORD32(WqMemBlockNode, 12);
FIELD32(WqMemBlockNode, prev, 4);
FIELD32(WqMemBlockNode, next, 8);
RECORD32(WqMemBlock, 16);
FIELD32(WqMemBlock, first, 4);
FIELD32(WqMemBlock, last, 8);
FIELD32(WqMemBlock, current, 12);
RECORD32(WqVer, 4);
FIELD32(WqMainBlock, mainWnd, 4);
FIELD32(WqMainBlock, allocCount, 8);
FIELD32(WqMainBlock, wndList, 12);
