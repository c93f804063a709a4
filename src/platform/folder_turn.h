// Turns of programs of this kind at the files of one folder.
#pragma once

#include <chrono>
#include <string>

namespace fenmark::platform {

// Held for its life. What takes several steps, such as clearing away what lies beside a name that nothing bears and then
// giving that name to a file, belongs into a turn, so that no other of these programs acts in between. It does not hold up
// for ever: after the patience, and where a folder cannot be locked, the program goes on without. Windows needs no
// turns: there an open file can neither be removed nor replaced.
class FolderTurn {
  public:
    static constexpr std::chrono::milliseconds kPatience{5000};

    explicit FolderTurn(const std::string& folder, std::chrono::milliseconds patience = kPatience);
    ~FolderTurn();
    FolderTurn(const FolderTurn&) = delete;
    FolderTurn& operator=(const FolderTurn&) = delete;

    // True while no other program can have the turn.
    [[nodiscard]] bool isHeld() const { return descriptor_ >= 0; }

  private:
    int descriptor_ = -1;
};

} // namespace fenmark::platform
