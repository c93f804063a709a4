// A file's content through a stream, for the ways in which files are written here.
#pragma once

#include "platform/files.h"

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <system_error>

namespace fenmark::platform {

// Runs the writer on a stream that gives its bytes to the sink. Returns the sink's first error; the sink is not called
// again after it.
[[nodiscard]] std::error_code writeThrough(const std::function<std::error_code(std::string_view)>& sink,
                                           const std::function<void(std::ostream&)>& write);

// Writes a file by way of a temporary one.
[[nodiscard]] std::error_code writeAside(const std::string& path, const std::function<void(std::ostream&)>& write,
                                         AtLink atLink);

} // namespace fenmark::platform
