// Handles: small numbers for objects of this process. A handle carries the generation of its place in the table. So a
// closed handle stays invalid when its place is used again.
#pragma once

#include "platform/winapi.h"

#include <memory>
#include <mutex>
#include <typeinfo>
#include <utility>
#include <vector>

namespace platform {

// The base of all objects that a kernel handle can stand for.
class Object {
 public:
  Object() = default;
  virtual ~Object() = default;
  Object(const Object &) = delete;
  Object &operator=(const Object &) = delete;
};

// An object that CloseHandle closes. Other kinds have their own function.
class Closable : public Object {};

class Handles {
 public:
  // firstGeneration: if above 0, no handle is a small number, which may have another meaning.
  explicit Handles(uint32_t firstGeneration = 0) : firstGeneration_(firstGeneration) {}

  // Makes a handle for an object. The handle keeps the object alive.
  HANDLE open(std::shared_ptr<Object> object);
  // The object of a handle; null for an invalid handle and for an object of another kind.
  template <typename Kind> std::shared_ptr<Kind> get(HANDLE handle) {
    auto object = find(handle);
    if (const Object *found = object.get(); found && typeid(*found) == typeid(Kind)) // the usual case, and much faster
      return std::static_pointer_cast<Kind>(std::move(object));
    return std::dynamic_pointer_cast<Kind>(object);
  }
  // The same without a share in the object, for a table whose users hold one lock of theirs whenever they open, close
  // or look. The object stays until its handle is closed or that lock is given up.
  template <typename Kind> Kind *look(HANDLE handle) {
    const Place *place = placeOf(handle);
    Object *object = place ? place->object.get() : nullptr;
    if (object && typeid(*object) == typeid(Kind)) return static_cast<Kind *>(object);
    return dynamic_cast<Kind *>(object);
  }
  // Removes a handle. The object is destroyed with its last user, outside the table's lock.
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
  // A multiple of 4, as on the platform: index and generation above two zero bits.
  static HANDLE handleOf(uint32_t index, uint32_t generation) {
    return reinterpret_cast<HANDLE>(static_cast<uintptr_t>((generation << kIndexBits | (index + 1)) << 2));
  }

  static constexpr uint32_t kIndexBits = 18;
  const uint32_t firstGeneration_;
  std::mutex mutex_;
  std::vector<Place> places_;
  std::vector<uint32_t> free_;
};

// The table of this process.
Handles &handles();

} // namespace platform
