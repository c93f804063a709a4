// The imports of a file of the same name that a drawing has already.
#pragma once

#include "cli/cli.h"
#include "drawing/drawing.h"

#include <cstddef>
#include <string>
#include <vector>

namespace fenmark::cli {

class EarlierImports {
  public:
    // `name` is the one by which rows know the file, `madeNow` what this call has imported into the drawing.
    EarlierImports(const drawing::Drawing& drawing, const std::string& file, const std::string& name, bool replace,
                   const std::vector<host::MdDbObjectId>& madeNow, const Streams& streams);

    // Takes out those that are to be replaced, with all that they brought.
    void removeReplaced(drawing::Drawing& drawing) const;
    void tell(const Streams& streams, bool quiet, const std::string& file) const;

  private:
    bool replace_;
    std::vector<std::size_t> replaced_; // places among the drawing's imports
    bool keepsNamesake_ = false;
    std::string times_; // when they were made, in words; empty if there are none
};

} // namespace fenmark::cli
