// The user's language by the environment.
#pragma once

#include <cstdlib>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace fenmark::platform {

// "ja" of "ja_JP.UTF-8"; empty where the first variable that is set names no language ("C"), nothing where none is.
inline std::optional<std::string> languageOfEnvironment() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* const value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            const std::string_view text(value);
            const std::string_view language = text.substr(0, text.find_first_of("_.@"));
            return language.size() == 2 ? std::string(language) : std::string();
        }
    }
    return std::nullopt;
}

} // namespace fenmark::platform
