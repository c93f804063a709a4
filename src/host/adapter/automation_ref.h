// An owned reference to an automation object.
#pragma once

#include "host/boundary/automation_error.h"
#include "host/surface/automation.h"

#include <utility>

namespace fenmark::host {

// Holds one reference and releases it once. Use of an object that is not there raises AutomationError (pointer).
template <typename T>
class AutomationRef {
  public:
    AutomationRef() = default;
    explicit AutomationRef(T* owned) : object_(owned) {}
    AutomationRef(AutomationRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    AutomationRef& operator=(AutomationRef&& other) noexcept {
        T* const taken = std::exchange(other.object_, nullptr);
        release();
        object_ = taken;
        return *this;
    }
    AutomationRef(const AutomationRef&) = delete;
    AutomationRef& operator=(const AutomationRef&) = delete;
    ~AutomationRef() { release(); }

    // A further reference to an object that somebody else holds.
    static AutomationRef share(T* object) {
        if (object != nullptr) {
            object->addReference();
        }
        return AutomationRef(object);
    }

    explicit operator bool() const { return object_ != nullptr; }
    T* get() const { return object_; }
    T* operator->() const {
        if (object_ == nullptr) {
            throw AutomationError(kStatusPointerError, "an automation object is missing");
        }
        return object_;
    }

    void release() {
        if (T* const held = std::exchange(object_, nullptr)) {
            held->release();
        }
    }
    // Where an operation writes its result: what was held is released first.
    T*& receive() {
        release();
        return object_;
    }

  private:
    T* object_ = nullptr;
};

// Asks an object for one of its interfaces. What the target held is released; on failure it is left empty.
template <typename Interface>
mirdane::AutomationStatus queryInterface(const AutomationRef<mirdane::AutomationObject>& object,
                                         AutomationRef<Interface>& result) {
    void* found = nullptr;
    const mirdane::AutomationStatus status = object->query(Interface::kInterface, found);
    result = AutomationRef<Interface>(status == 0 ? static_cast<Interface*>(found) : nullptr);
    return status;
}

} // namespace fenmark::host
