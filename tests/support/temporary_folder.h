// A folder of a test's own, removed with everything in it at the end.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::test {

class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "fenmark-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            ADD_FAILURE() << "no temporary folder";
        }
        path_ = pattern;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored); // a test may have taken them
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string at(std::string_view name) const { return path_ + "/" + std::string(name); }
    const std::string& path() const { return path_; }

    // Of what lies in it, sorted.
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    std::string write(std::string_view name, std::string_view content) const {
        std::ofstream(at(name), std::ios::binary) << content;
        return at(name);
    }

  private:
    std::string path_;
};

inline std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline bool fileExists(const std::string& path) {
    return std::filesystem::exists(path);
}

} // namespace fenmark::test
