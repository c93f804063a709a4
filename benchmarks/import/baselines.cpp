// What the reader is measured against.
#include "import/baselines.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iconv.h>
#include <sstream>
#include <string_view>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace fenmark::bench {

std::uint64_t mapSplitConvert(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY);
    struct stat info {};
    if (file < 0 || fstat(file, &info) != 0) {
        std::perror(path.c_str());
        std::exit(1);
    }
    const auto size = static_cast<std::size_t>(info.st_size);
    void* const mapped = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    const char* at = static_cast<const char*>(mapped);
    const char* const end = at + size;
    double sum = 0.0;
    std::uint64_t count = 0;
    std::vector<std::string_view> fields;
    while (at < end) {
        const void* const found = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
        const char* const lineEnd = found != nullptr ? static_cast<const char*>(found) : end;
        fields.clear();
        const char* start = at;
        for (const char* p = at; p != lineEnd; ++p) {
            if (*p == ',') {
                fields.emplace_back(start, static_cast<std::size_t>(p - start));
                start = p + 1;
            }
        }
        fields.emplace_back(start, static_cast<std::size_t>(lineEnd - start));
        count += fields.size();
        if (fields.size() >= 6 && fields[0] == "A01") {
            for (std::size_t i = 3; i <= 5; ++i) {
                double value = 0.0;
                const char* first = fields[i].data();
                const char* const last = first + fields[i].size();
                while (first != last && *first == ' ') {
                    ++first;
                }
                std::from_chars(first, last, value);
                sum += value;
            }
        }
        at = lineEnd + 1;
    }
    munmap(mapped, size);
    close(file);
    return count + std::bit_cast<std::uint64_t>(sum);
}

namespace {

using Split = void (*)(std::wstring& line, std::vector<std::wstring>& fields);

std::uint64_t readPlainly(const std::string& path, Split split) {
    std::ifstream file(path, std::ios::binary);
    iconv_t const converter = iconv_open("WCHAR_T", "CP932");
    if (!file || converter == reinterpret_cast<iconv_t>(-1)) {
        std::fprintf(stderr, "%s: cannot be read\n", path.c_str());
        std::exit(1);
    }
    std::uint64_t count = 0;
    std::string line;
    while (std::getline(file, line)) {
        std::wstring wide(line.size(), L'\0');
        char* in = line.data();
        std::size_t inLeft = line.size();
        char* out = reinterpret_cast<char*>(wide.data());
        std::size_t outLeft = wide.size() * sizeof(wchar_t);
        iconv(converter, &in, &inLeft, &out, &outLeft);
        wide.resize(wide.size() - outLeft / sizeof(wchar_t));
        std::vector<std::wstring> fields;
        split(wide, fields);
        count += fields.size();
    }
    iconv_close(converter);
    return count;
}

} // namespace

std::uint64_t getlineIconvCut(const std::string& path) {
    return readPlainly(path, [](std::wstring& line, std::vector<std::wstring>& fields) {
        for (std::size_t comma = line.find(L','); comma != std::wstring::npos; comma = line.find(L',')) {
            fields.push_back(line.substr(0, comma));
            line.erase(0, comma + 1);
        }
        fields.push_back(line);
    });
}

std::uint64_t getlineIconvStream(const std::string& path) {
    return readPlainly(path, [](std::wstring& line, std::vector<std::wstring>& fields) {
        std::wistringstream stream(line);
        std::wstring field;
        while (std::getline(stream, field, L',')) {
            fields.push_back(field);
        }
    });
}

} // namespace fenmark::bench
