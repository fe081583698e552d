#include "platform/desktop/clipboard/content.h"

#include "platform/desktop/clipboard/formats.h"

#include <algorithm>

namespace platform {

namespace {

using From = ClipItem::From;

// Frees an item's data. The owner frees its own handles itself. freeBlock skips a block that the program has freed.
void freeItem(ClipItem &item) {
  const bool own = item.from == From::program && clipKindOf(item.format) == ClipKind::own;
  if (item.handle && !own) {
    if (item.block.at)
      freeBlock(item.handle, item.block);
    else
      freeClipData(item.format, item.handle);
  }
  item.handle = nullptr;
  item.block = {};
}

bool isPromise(const ClipItem &item) { return item.from == From::program && !item.handle; }

} // namespace

ClipItem *ClipContent::find(UINT format) {
  const auto at =
      std::find_if(items_.begin(), items_.end(), [&](const ClipItem &item) { return item.format == format; });
  return at == items_.end() ? nullptr : &*at;
}

const ClipItem *ClipContent::sourceOf(UINT format) {
  const ClipItem *source = nullptr;
  for (const UINT one : clipFamilyOf(format)) {
    const ClipItem *const item = find(one);
    if (item && item->from != From::made && (!source || (!source->handle && item->handle))) source = item;
  }
  return source;
}

const ClipItem *ClipContent::forType(const std::string &type) {
  for (const ClipItem &item : items_) {
    if (item.from != From::program) continue;
    const std::vector<std::string> types = typesOfClipFormat(item.format);
    if (std::count(types.begin(), types.end(), type) == 0) continue;
    return clipFamilyOf(item.format).empty() ? &item : sourceOf(item.format);
  }
  return nullptr;
}

bool ClipContent::hasPromises() const { return std::any_of(items_.begin(), items_.end(), isPromise); }

void ClipContent::give(UINT format, HANDLE handle, BlockBytes block) {
  ClipItem *item = find(format);
  if (!item) {
    items_.push_back({format, From::program, nullptr, {}, {}});
    item = &items_.back();
  }
  const bool rendered = isPromise(*item);
  freeItem(*item);
  item->from = From::program;
  item->handle = handle;
  item->block = std::move(block);
  if (rendered) return;
  for (ClipItem &one : items_) // their data were made from the former ones
    if (one.from == From::made) freeItem(one);
}

void ClipContent::addOfOthers(UINT format, const std::string &type) {
  if (!find(format)) items_.push_back({format, From::others, nullptr, {}, type});
}

void ClipContent::adopt() {
  std::erase_if(items_, [](ClipItem &item) {
    if (item.from != From::others) return false;
    const bool goes = !item.handle || clipKindOf(item.format) == ClipKind::own;
    if (goes) freeItem(item);
    item.from = From::program;
    return goes;
  });
}

void ClipContent::addMade(UINT format) {
  if (!find(format)) items_.push_back({format, From::made, nullptr, {}, {}});
}

void ClipContent::addMade() {
  if (sourceOf(CF_TEXT))
    for (const UINT format : {CF_LOCALE, CF_TEXT, CF_OEMTEXT, CF_UNICODETEXT}) addMade(format);
  if (sourceOf(CF_DIB))
    for (const UINT format : {CF_BITMAP, CF_DIB, CF_DIBV5}) addMade(format);
}

void ClipContent::keep(UINT format, HANDLE handle) {
  ClipItem *const item = handle ? find(format) : nullptr;
  if (!item || item->handle) {
    if (handle) freeClipData(format, handle);
    return;
  }
  item->handle = handle;
  if (clipKindOf(format) == ClipKind::block || clipKindOf(format) == ClipKind::own) item->block = bytesOf(handle);
}

bool ClipContent::dropPromises() {
  if (std::erase_if(items_, isPromise) == 0) return false;
  const auto isBaseless = [&](ClipItem &item) {
    if (item.from != From::made || sourceOf(item.format == CF_LOCALE ? CF_TEXT : item.format)) return false;
    freeItem(item);
    return true;
  };
  std::vector<ClipItem> rest;
  for (ClipItem &item : items_)
    if (!isBaseless(item)) rest.push_back(item);
  items_ = std::move(rest);
  return true;
}

void ClipContent::clear() {
  for (ClipItem &item : items_) freeItem(item);
  items_.clear();
}

std::vector<std::string> ClipContent::types() const {
  std::vector<std::string> all;
  for (const ClipItem &item : items_) {
    if (item.from != From::program) continue;
    for (std::string &type : typesOfClipFormat(item.format))
      if (std::count(all.begin(), all.end(), type) == 0) all.push_back(std::move(type));
  }
  return all;
}

} // namespace platform
