// A folder in memory for the files of one fuzzer, and a drawing that is made once as the ground for mutations.
#pragma once

#include "drawing/drawing.h"
#include "drawing/geopackage/drawing_store.h"
#include "require.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace fenmark::fuzz {

class Sandbox {
  public:
    Sandbox() {
        const char* const memory = "/dev/shm";
        const std::filesystem::path base = std::filesystem::is_directory(memory)
                                               ? std::filesystem::path(memory)
                                               : std::filesystem::temp_directory_path();
        std::string pattern = (base / "fenmark-fuzz-XXXXXX").string();
        require(mkdtemp(pattern.data()) != nullptr, "a folder");
        folder_ = pattern;
    }
    ~Sandbox() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;

    const std::filesystem::path& folder() const { return folder_; }
    std::string at(const std::string& name) const { return (folder_ / name).string(); }
    std::string write(const std::string& name, std::string_view content) const {
        std::ofstream(folder_ / name, std::ios::binary)
            .write(content.data(), static_cast<std::streamsize>(content.size()));
        return at(name);
    }
    static std::string read(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void clear() const {
        for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
            std::filesystem::remove_all(entry.path());
        }
    }

  private:
    std::filesystem::path folder_;
};

// Removed when the process ends without a finding.
inline Sandbox& sandbox() {
    static Sandbox one;
    return one;
}

// The bytes of a package with an object of every kind. Makes and removes a file in the sandbox.
std::string samplePackage();

// What must hold of a drawing on disk, whatever was done to it: it opens or says why not; what opens can be exported,
// takes more objects, and reads back as it was saved.
void judgePackage(const std::string& path);

} // namespace fenmark::fuzz
