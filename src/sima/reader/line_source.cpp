// A text file line by line.
#include "sima/reader/line_source.h"

#include "sima/text/path.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

namespace fenmark::sima {

namespace {

constexpr std::size_t kBlock = std::size_t{256} << 10;

} // namespace

bool LineSource::open(std::string_view path) {
    path_ = path;
    const std::filesystem::path file = pathOf(path);
    std::error_code error;
    if (std::filesystem::is_directory(file, error)) {
        return false;
    }
    file_.open(file, std::ios::in | std::ios::binary);
    if (!file_.is_open()) {
        return false;
    }
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    length_ = error ? 0 : static_cast<std::int64_t>(size);
    buffer_.resize(kBlock);
    try {
        fill();
    } catch (const std::system_error&) {
        return false; // it opens, and its first byte cannot be read
    }
    return true;
}

bool LineSource::fill() {
    if (atEnd_) {
        return false;
    }
    if (start_ > 0) {
        std::memmove(buffer_.data(), buffer_.data() + start_, end_ - start_);
        end_ -= start_;
        start_ = 0;
    }
    if (end_ == buffer_.size()) {
        buffer_.resize(2 * buffer_.size()); // a line longer than the block
    }
    std::streamsize got = 0;
    errno = 0;
    try {
        got = file_.rdbuf()->sgetn(buffer_.data() + end_, static_cast<std::streamsize>(buffer_.size() - end_));
    } catch (const std::ios_base::failure&) {
        throw std::system_error(errno != 0 ? errno : EIO, std::generic_category(), path_);
    }
    atEnd_ = got <= 0;
    end_ += static_cast<std::size_t>(std::max<std::streamsize>(got, 0));
    return !atEnd_;
}

bool LineSource::next(std::string_view& line) {
    std::size_t searched = start_;
    for (;;) {
        const void* const found =
            end_ > searched ? std::memchr(buffer_.data() + searched, '\n', end_ - searched) : nullptr;
        if (found != nullptr) {
            const auto at = static_cast<std::size_t>(static_cast<const char*>(found) - buffer_.data());
            line = {buffer_.data() + start_, at - start_};
            position_ += static_cast<std::int64_t>(at + 1 - start_);
            start_ = at + 1;
            break;
        }
        searched = end_ - start_; // what lies there moves to the front
        if (!fill()) {
            if (start_ == end_) {
                return false;
            }
            line = {buffer_.data() + start_, end_ - start_};
            position_ += static_cast<std::int64_t>(end_ - start_);
            start_ = end_;
            break;
        }
    }
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return true;
}

} // namespace fenmark::sima
