// What is the same for files on every system.
#include "platform/files.h"

#include "platform/paths.h"
#include "platform/write_through.h"

#include <filesystem>
#include <ostream>
#include <streambuf>
#include <utility>
#include <vector>

namespace fenmark::platform {

namespace {

constexpr std::size_t kBuffer = 1 << 16; // bytes

constexpr std::pair<std::errc, const char*> kJapaneseReasons[] = {
    {std::errc::no_such_file_or_directory, "ファイルまたはフォルダがありません"},
    {std::errc::permission_denied, "許可がありません"},
    {std::errc::operation_not_permitted, "許可されていない操作です"},
    {std::errc::read_only_file_system, "読み取り専用です"},
    {std::errc::is_a_directory, "フォルダです"},
    {std::errc::not_a_directory, "フォルダではありません"},
    {std::errc::no_space_on_device, "ディスクの空きがありません"},
    {std::errc::file_too_large, "ファイルが大きすぎます"},
    {std::errc::device_or_resource_busy, "他のプログラムが使用しています"},
    {std::errc::io_error, "入出力エラーです"},
    {std::errc::too_many_files_open, "開いているファイルが多すぎます"},
    {std::errc::too_many_files_open_in_system, "システム全体で開いているファイルが多すぎます"},
    {std::errc::too_many_symbolic_link_levels, "リンクが循環しています"},
    {std::errc::filename_too_long, "名前が長すぎます"},
    {std::errc::not_enough_memory, "メモリが足りません"},
    {std::errc::file_exists, "同じ名前のファイルが既にあります"},
    {std::errc::invalid_argument, "引数が正しくありません"},
    {std::errc::broken_pipe, "読み手が閉じました"},
};

// A stream's buffer over any function that writes. Keeps the first error, and writes nothing after it.
class Buffer : public std::streambuf {
  public:
    using Write = std::function<std::error_code(std::string_view)>;
    explicit Buffer(Write write) : write_(std::move(write)), bytes_(kBuffer) {
        setp(bytes_.data(), bytes_.data() + bytes_.size());
    }
    const std::error_code& error() const { return error_; }

  protected:
    int_type overflow(int_type c) override {
        if (!drain()) {
            return traits_type::eof();
        }
        if (!traits_type::eq_int_type(c, traits_type::eof())) {
            sputc(traits_type::to_char_type(c));
        }
        return traits_type::not_eof(c);
    }
    int sync() override { return drain() ? 0 : -1; }

  private:
    bool drain() {
        if (!error_) {
            error_ = write_({pbase(), static_cast<std::size_t>(pptr() - pbase())});
        }
        setp(bytes_.data(), bytes_.data() + bytes_.size());
        return !error_;
    }

    Write write_;
    std::error_code error_;
    std::vector<char> bytes_;
};

} // namespace

bool leadToOneFile(const std::string& a, const std::string& b) {
    std::error_code error;
    return std::filesystem::equivalent(pathOf(a), pathOf(b), error);
}

Worded wordedReason(const std::error_code& error) {
    const std::string english = reasonOf(error);
    for (const auto& [meaning, japanese] : kJapaneseReasons) {
        if (error == meaning) {
            return {english, japanese};
        }
    }
    return english;
}

std::error_code writeThrough(const std::function<std::error_code(std::string_view)>& sink,
                             const std::function<void(std::ostream&)>& write) {
    Buffer buffer(sink);
    std::ostream out(&buffer);
    write(out);
    out.flush();
    return buffer.error();
}

std::error_code writeAside(const std::string& path, const std::function<void(std::ostream&)>& write, AtLink atLink) {
    TemporaryFile file;
    if (const std::error_code error = file.make(path, atLink)) {
        return error;
    }
    if (const std::error_code error = writeThrough([&](std::string_view bytes) { return file.write(bytes); }, write)) {
        return error;
    }
    return file.putInPlace();
}

TemporaryFile::TemporaryFile() = default;

TemporaryFile::~TemporaryFile() {
    discard();
}

TemporaryFile::TemporaryFile(TemporaryFile&& other) noexcept {
    *this = std::move(other);
}

TemporaryFile& TemporaryFile::operator=(TemporaryFile&& other) noexcept {
    if (this != &other) {
        discard();
        path_ = std::exchange(other.path_, {});
        target_ = std::exchange(other.target_, {});
        descriptor_ = std::exchange(other.descriptor_, -1);
        rights_ = other.rights_;
        complete_ = other.complete_;
    }
    return *this;
}

} // namespace fenmark::platform
