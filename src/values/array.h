// The growable array that all records use: a vector whose index operator refuses what is out of range.
#pragma once

#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace fenmark::sima {

template <typename T, typename Allocator = std::allocator<T>>
class Array : public std::vector<T, Allocator> {
  public:
    using std::vector<T, Allocator>::vector;
    using size_type = typename std::vector<T, Allocator>::size_type;

    // std::invalid_argument for an index outside the array. Some callers rely on that as stated behaviour.
    T& operator[](size_type index) {
        check(index);
        return std::vector<T, Allocator>::operator[](index);
    }
    const T& operator[](size_type index) const {
        check(index);
        return std::vector<T, Allocator>::operator[](index);
    }

  private:
    void check(size_type index) const {
        if (index >= this->size()) {
            throw std::invalid_argument("array index out of range");
        }
    }
};

} // namespace fenmark::sima
