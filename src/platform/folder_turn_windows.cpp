// No turns: on Windows an open file can neither be removed nor replaced.
#include "platform/folder_turn.h"

namespace fenmark::platform {

FolderTurn::FolderTurn(const std::string&, std::chrono::milliseconds) {}
FolderTurn::~FolderTurn() = default;

} // namespace fenmark::platform
