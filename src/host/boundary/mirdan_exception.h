// The system's one exception class: thrown as a pointer to a new object, deleted by the catcher.
#pragma once

#include <string>
#include <utility>

namespace fenmark::host {

class MirdanException {
  public:
    explicit MirdanException(std::string message) : message_(std::move(message)) {}
    virtual ~MirdanException() = default;
    const std::string& message() const { return message_; }

  private:
    std::string message_;
};

} // namespace fenmark::host
