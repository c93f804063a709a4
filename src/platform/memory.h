// Memory, as far as the system can be told how it will be used.
#pragma once

#include <cstddef>

namespace fenmark::platform {

// Asks for large pages behind memory that begins at one and holds whole ones. A wish: where it is refused, the memory
// has small pages and holds the same.
void wishLargePages(void* memory, std::size_t bytes) noexcept;

} // namespace fenmark::platform
