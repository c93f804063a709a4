// What a file is by its first bytes.
#include "drawing/geopackage/package_file.h"

#include "platform/files.h"
#include "platform/paths.h"

#include <array>
#include <fstream>
#include <ios>
#include <string_view>

namespace fenmark::drawing {

bool isPackageFile(const std::string& path) {
    using namespace std::string_view_literals;
    constexpr std::string_view kHead = "SQLite format 3\0"sv;
    if (platform::lookUp(path).kind != platform::PathKind::File) {
        return false; // reading a pipe would wait
    }
    std::ifstream file(platform::pathOf(path), std::ios::binary);
    std::array<char, kHead.size()> head{};
    return file.read(head.data(), static_cast<std::streamsize>(head.size())) &&
           std::string_view(head.data(), head.size()) == kHead;
}

} // namespace fenmark::drawing
