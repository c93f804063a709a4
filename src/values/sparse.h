// A value that most of its owners do not have.
#pragma once

#include <memory>
#include <utility>

namespace fenmark::sima {

// As wide as a pointer; made when it is first changed, and copied with its owner.
template <typename T>
class Sparse {
  public:
    Sparse() = default;
    Sparse(const Sparse& other) : value_(other.value_ ? std::make_unique<T>(*other.value_) : nullptr) {}
    Sparse(Sparse&&) noexcept = default;
    Sparse& operator=(Sparse other) noexcept {
        value_ = std::move(other.value_);
        return *this;
    }
    ~Sparse() = default;

    // A default value where there is none.
    const T& get() const {
        static const T none;
        return value_ ? *value_ : none;
    }
    T& edit() {
        if (!value_) {
            value_ = std::make_unique<T>();
        }
        return *value_;
    }

  private:
    std::unique_ptr<T> value_;
};

} // namespace fenmark::sima
