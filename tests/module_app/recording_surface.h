// The module part of the host surface, written down call by call, with answers that a test sets.
#pragma once

#include "host/surface/module.h"

#include <string>
#include <vector>

namespace fenmark::module::test {

struct RecordingSurface {
    std::vector<std::string> calls;
    std::vector<mirdane::ResultEntry> loadedModules;
    mirdane::Status loadStatus = 0;
    mirdane::Status addStatus = 0;
    bool hasRegistry = true;
    int functionCode = -1;
    std::vector<mirdane::CommandEntry> commands;
    mirdane::MdApDocManager* documents = nullptr;
};

// The one of the running test.
inline RecordingSurface* surface = nullptr;

} // namespace fenmark::module::test
