// What leaves a read when a route begins with a clothoid.
#pragma once

#include <stdexcept>

namespace fenmark::output {

class LeadingClothoid : public std::invalid_argument {
  public:
    LeadingClothoid()
        : std::invalid_argument("the route begins with a clothoid, and a clothoid needs an element before it") {}
};

} // namespace fenmark::output
