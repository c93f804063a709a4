// What leaves a pass when a section takes a field that the record does not have.
#pragma once

#include <stdexcept>

namespace fenmark::sima {

class ShortRecord : public std::invalid_argument {
  public:
    ShortRecord() : std::invalid_argument("the record is too short for the fields that its section takes") {}
};

} // namespace fenmark::sima
