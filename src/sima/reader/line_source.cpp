// A text file line by line.
#include "sima/reader/line_source.h"

#include "sima/text/path.h"
#include "sima/text/utf8.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <ios>

namespace fenmark::sima {

namespace {

constexpr std::size_t kBlock = std::size_t{256} << 10;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

} // namespace

LineTooLong::LineTooLong(std::size_t longest)
    : std::runtime_error("the line is longer than " + std::to_string(longest >> 20) +
                         " MiB, which no line of a SIMA file is") {}

bool LineSource::open(std::string_view path) {
    path_ = path;
    const std::filesystem::path file = pathOf(path);
    std::error_code error;
    if (std::filesystem::is_directory(file, error)) {
        openError_ = std::make_error_code(std::errc::is_a_directory);
        return false;
    }
    if (isPipeOrDevice(file)) {
        openError_ = std::make_error_code(std::errc::invalid_argument);
        return false;
    }
    errno = 0;
    file_.open(file, std::ios::in | std::ios::binary);
    if (!file_.is_open()) {
        openError_ = std::error_code(errno != 0 ? errno : EIO, std::generic_category());
        return false;
    }
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    length_ = error ? 0 : static_cast<std::int64_t>(size);
    buffer_.resize(kBlock);
    try {
        fill();
    } catch (const ReadFailure& failure) {
        openError_ = failure.code();
        return false;
    }
    if (encoding_ == Encoding::Utf8 && ahead().starts_with(kByteOrderMark)) {
        skip(kByteOrderMark.size());
    }
    return true;
}

// 0 at the end of the file. All that was asked for, unless the file ends before.
std::size_t LineSource::readBlock(char* into, std::size_t size) {
    errno = 0;
    try {
        const std::streamsize got = file_.rdbuf()->sgetn(into, static_cast<std::streamsize>(size));
        filePosition_ += got;
        return static_cast<std::size_t>(std::max<std::streamsize>(got, 0));
    } catch (const std::ios_base::failure&) {
        throw ReadFailure(errno != 0 ? errno : EIO, std::generic_category(), path_);
    }
}

// Room behind what the buffer holds: the first place goes to the front, and a line that fills the buffer makes it grow.
void LineSource::makeRoom() {
    if (start_ > 0) {
        std::memmove(buffer_.data(), buffer_.data() + start_, end_ - start_);
        end_ -= start_;
        start_ = 0;
    }
    if (end_ < buffer_.size()) {
        return;
    }
    constexpr std::size_t kLineEnd = 2;
    if (end_ - kLineEnd >= longestLine_) {
        throw LineTooLong(longestLine_);
    }
    const std::size_t enough = longestLine_ < buffer_.max_size() - kLineEnd ? longestLine_ + kLineEnd : 2 * end_;
    buffer_.resize(std::min(2 * end_, std::max(enough, kBlock)));
}

// Appends the next block as UTF-8 and returns its length; 0 at the end of the file.
std::size_t LineSource::fillFromUtf16() {
    while (true) {
        if (transcoded_.empty()) {
            const std::size_t kept = pending_.size();
            pending_.resize(kept + kBlock / 2);
            const std::size_t got = readBlock(pending_.data() + kept, kBlock / 2);
            pending_.resize(kept + got);
            if (pending_.empty()) {
                return 0;
            }
            const std::size_t used = appendUtf16(transcoded_, pending_, encoding_ == Encoding::Utf16Be, got == 0);
            pending_.erase(0, used);
            if (!markSeen_ && std::string_view(transcoded_).starts_with(kByteOrderMark)) {
                transcoded_.erase(0, kByteOrderMark.size());
            }
            markSeen_ = markSeen_ || used > 0;
            continue;
        }
        const std::size_t piece = std::min(transcoded_.size(), buffer_.size() - end_);
        std::memcpy(buffer_.data() + end_, transcoded_.data(), piece);
        transcoded_.erase(0, piece);
        return piece;
    }
}

bool LineSource::fill() {
    if (atEnd_) {
        return false;
    }
    makeRoom();
    const std::size_t got = isUtf16() ? fillFromUtf16() : readBlock(buffer_.data() + end_, buffer_.size() - end_);
    atEnd_ = got == 0;
    end_ += got;
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
