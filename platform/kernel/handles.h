// Handles: small numbers for objects of this process. A number carries the generation of its place, so that one that was
// closed is known as such although its place is in use again.
#pragma once

#include "platform/winapi.h"

#include <memory>
#include <mutex>
#include <typeinfo>
#include <utility>
#include <vector>

namespace platform {

// What a kernel handle can stand for.
class Object {
 public:
  Object() = default;
  virtual ~Object() = default;
  Object(const Object &) = delete;
  Object &operator=(const Object &) = delete;
};

// What CloseHandle closes; other kinds have a function of their own.
class Closable : public Object {};

class Handles {
 public:
  // firstGeneration: above 0, handles are never small numbers, which may mean something else.
  explicit Handles(uint32_t firstGeneration = 0) : firstGeneration_(firstGeneration) {}

  // A handle for an object, which the handle keeps alive.
  HANDLE open(std::shared_ptr<Object> object);
  // Null for a handle that is none, and for one of another kind.
  template <typename Kind> std::shared_ptr<Kind> get(HANDLE handle) {
    auto object = find(handle);
    if (const Object *found = object.get(); found && typeid(*found) == typeid(Kind)) // mostly, and much quicker
      return std::static_pointer_cast<Kind>(std::move(object));
    return std::dynamic_pointer_cast<Kind>(object);
  }
  // The same without a share in the object, for a table that all who open, close and look do so under one lock of theirs.
  // Good until the object's handle is closed, or that lock is given up.
  template <typename Kind> Kind *look(HANDLE handle) {
    const Place *place = placeOf(handle);
    Object *object = place ? place->object.get() : nullptr;
    if (object && typeid(*object) == typeid(Kind)) return static_cast<Kind *>(object);
    return dynamic_cast<Kind *>(object);
  }
  // Takes a handle away. The object goes with its last user, outside the table's lock.
  template <typename Kind> bool close(HANDLE handle) { return get<Kind>(handle) && remove(handle) != nullptr; }
  size_t count();

 private:
  struct Place {
    std::shared_ptr<Object> object;
    uint32_t generation = 0;
  };
  std::shared_ptr<Object> find(HANDLE handle);
  std::shared_ptr<Object> remove(HANDLE handle);
  Place *placeOf(HANDLE handle) {
    const auto value = reinterpret_cast<uintptr_t>(handle);
    const uintptr_t index = (value >> 2 & ((1u << kIndexBits) - 1)) - 1;
    if (index >= places_.size()) return nullptr;
    Place &place = places_[index];
    return place.object && handleOf(static_cast<uint32_t>(index), place.generation) == handle ? &place : nullptr;
  }
  // A multiple of 4, as on the platform: index and generation above two zeros.
  static HANDLE handleOf(uint32_t index, uint32_t generation) {
    return reinterpret_cast<HANDLE>(static_cast<uintptr_t>((generation << kIndexBits | (index + 1)) << 2));
  }

  static constexpr uint32_t kIndexBits = 18;
  const uint32_t firstGeneration_;
  std::mutex mutex_;
  std::vector<Place> places_;
  std::vector<uint32_t> free_;
};

// The one table of the process.
Handles &handles();

} // namespace platform
