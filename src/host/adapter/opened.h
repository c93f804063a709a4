// An opened object of the drawing, and allocation on the host's heap.
#pragma once

#include "host/surface/database.h"

#include <new>
#include <utility>

namespace fenmark::host {

// Closes the object once, at the latest when it goes. May be empty: then there is nothing to close.
template <typename T>
class Opened {
  public:
    Opened() = default;
    explicit Opened(T* object) : object_(object) {}
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;
    ~Opened() { close(); }

    explicit operator bool() const { return object_ != nullptr; }
    T* operator->() const { return object_; }
    T* get() const { return object_; }
    // Where the host writes the opened object.
    T*& receive() { return object_; }
    void close() {
        if (T* const held = std::exchange(object_, nullptr)) {
            held->close();
        }
    }

  private:
    T* object_ = nullptr;
};

// A database object built on the host's heap, since the host deletes it. Raises std::bad_alloc if there is no memory: an
// object that is missing without a word would be a lie of the log. Until it is appended, closing it is what gives it up.
template <typename T, typename... Arguments>
T* newOnHostHeap(Arguments&&... arguments) {
    void* const memory = mirdane::mdHeapAlloc(nullptr, sizeof(T));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    try {
        return new (memory) T(std::forward<Arguments>(arguments)...);
    } catch (...) {
        mirdane::mdHeapFree(nullptr, memory);
        throw;
    }
}

} // namespace fenmark::host
