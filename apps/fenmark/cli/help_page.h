// The layout of --help: names in a first column, what they are in a second one, all headings in the user's language.
#pragma once

#include "values/language.h"

#include <CLI/CLI.hpp>

#include <string>

namespace fenmark::cli {

class HelpPage : public CLI::Formatter {
  public:
    explicit HelpPage(Language language);

    std::string make_option(const CLI::Option* option, bool isPositional) const override;
    std::string make_option_opts(const CLI::Option* option) const override;
    std::string make_subcommand(const CLI::App* command) const override;
};

} // namespace fenmark::cli
