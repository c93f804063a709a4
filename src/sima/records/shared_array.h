// An array with the cost of a pointer for a copy: copies share their elements until one of them is changed.
#pragma once

#include "values/array.h"

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <utility>

namespace fenmark::sima {

// A value like Array: what is done to one copy is never seen in another. Dialogs and the command copy whole readers, so
// the arrays of the model must not be copied with them. Reading goes through const elements; edit() and edits() give
// elements to change, and pay for a copy of the array if another value shares it.
template <typename T, typename Allocator = std::allocator<T>>
class SharedArray {
  public:
    using Elements = Array<T, Allocator>;
    using value_type = T;
    using const_iterator = typename Elements::const_iterator;

    SharedArray() = default;
    SharedArray(std::initializer_list<T> elements) : elements_(std::make_shared<Elements>(elements)) {}
    SharedArray(Elements elements) : elements_(std::make_shared<Elements>(std::move(elements))) {}

    std::size_t size() const { return elements_ ? elements_->size() : 0; }
    bool empty() const { return size() == 0; }

    // std::invalid_argument for an index outside the array.
    const T& operator[](std::size_t index) const { return all()[index]; }
    const T& front() const { return all()[0]; }
    const T& back() const { return all()[size() - 1]; }
    const_iterator begin() const { return all().begin(); }
    const_iterator end() const { return all().end(); }
    // All elements; the reference holds until the array is changed.
    const Elements& all() const {
        static const Elements none;
        return elements_ ? *elements_ : none;
    }

    T& edit(std::size_t index) { return edits()[index]; }
    Elements& edits() {
        if (!elements_) {
            elements_ = std::make_shared<Elements>();
        } else if (elements_.use_count() > 1) {
            elements_ = std::make_shared<Elements>(*elements_);
        }
        return *elements_;
    }
    void push_back(T element) { edits().push_back(std::move(element)); }
    void clear() { elements_.reset(); }

  private:
    std::shared_ptr<Elements> elements_;
};

} // namespace fenmark::sima
