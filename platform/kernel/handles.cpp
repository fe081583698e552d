// The table of kernel handles: opening, closing and counting them.

#include "platform/kernel/handles.h"

#include "platform/kernel/errors.h"

namespace platform {

namespace {

constexpr uint32_t kGenerations = 1u << 11; // so many that a handle stays below 2 to the 31st

} // namespace

HANDLE Handles::open(std::shared_ptr<Object> object) {
  const std::lock_guard lock(mutex_);
  if (free_.empty()) {
    if (places_.size() + 2 >= 1u << kIndexBits) {
      SetLastError(ERROR_TOO_MANY_OPEN_FILES);
      return nullptr;
    }
    free_.reserve(places_.size() + 1); // room for the free list, so that closing never needs memory
    places_.emplace_back().generation = firstGeneration_;
    free_.push_back(static_cast<uint32_t>(places_.size() - 1));
  }
  const uint32_t index = free_.back();
  free_.pop_back();
  places_[index].object = std::move(object);
  return handleOf(index, places_[index].generation);
}

std::shared_ptr<Object> Handles::find(HANDLE handle) {
  const std::lock_guard lock(mutex_);
  const Place *place = placeOf(handle);
  return place ? place->object : nullptr;
}

std::shared_ptr<Object> Handles::remove(HANDLE handle) {
  const std::lock_guard lock(mutex_);
  Place *place = placeOf(handle);
  if (!place) return nullptr;
  if (++place->generation == kGenerations) place->generation = firstGeneration_;
  free_.push_back(static_cast<uint32_t>(place - places_.data()));
  return std::move(place->object);
}

size_t Handles::count() {
  const std::lock_guard lock(mutex_);
  return places_.size() - free_.size();
}

Handles &handles() {
  static auto *table = new Handles; // never destroyed: other static objects may still close handles at the end
  return *table;
}

} // namespace platform

BOOL CloseHandle(HANDLE handle) {
  return platform::handles().close<platform::Closable>(handle) ? TRUE : platform::failWith(ERROR_INVALID_HANDLE);
}
