// A file written beside its target and renamed over it.
#include "exchange/output_file.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <ostream>
#include <streambuf>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fenmark::exchange {

namespace {

constexpr std::size_t kBuffer = 1 << 16; // bytes

// Writes to a file descriptor and keeps the first error.
class DescriptorBuffer : public std::streambuf {
  public:
    explicit DescriptorBuffer(int descriptor) : descriptor_(descriptor), bytes_(kBuffer) {
        setp(bytes_.data(), bytes_.data() + bytes_.size());
    }
    int error() const { return error_; }

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
        const char* from = pbase();
        while (error_ == 0 && from < pptr()) {
            const ssize_t written = ::write(descriptor_, from, static_cast<std::size_t>(pptr() - from));
            if (written >= 0) {
                from += written;
            } else if (errno != EINTR) {
                error_ = errno;
            }
        }
        setp(bytes_.data(), bytes_.data() + bytes_.size());
        return error_ == 0;
    }

    int descriptor_;
    int error_ = 0;
    std::vector<char> bytes_;
};

// 0, or the error number.
int writeTo(int descriptor, const std::function<void(std::ostream&)>& write) {
    DescriptorBuffer buffer(descriptor);
    std::ostream out(&buffer);
    write(out);
    out.flush();
    return buffer.error();
}

std::string failure(const std::string& path, int error) {
    return path + ": cannot be written: " + std::strerror(error);
}

// Removes the file unless it was renamed.
struct TemporaryFile {
    std::string path;
    int descriptor = -1;
    ~TemporaryFile() {
        if (descriptor >= 0) {
            ::close(descriptor);
        }
        if (!path.empty()) {
            ::unlink(path.c_str());
        }
    }
};

} // namespace

std::string writeFile(const std::string& path, const std::function<void(std::ostream&)>& write) {
    struct ::stat status {};
    const bool exists = ::stat(path.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) {
        return path + ": is a folder";
    }
    if (exists && !S_ISREG(status.st_mode)) {
        const int descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
        if (descriptor < 0) {
            return failure(path, errno);
        }
        int error = writeTo(descriptor, write);
        if (::close(descriptor) != 0 && error == 0) {
            error = errno;
        }
        return error == 0 ? std::string() : failure(path, error);
    }
    // A symbolic link stays one: the file that it leads to is replaced.
    std::error_code ignored;
    std::string target = path;
    if (exists) {
        const std::filesystem::path resolved = std::filesystem::canonical(path, ignored);
        if (!ignored) {
            target = resolved.string();
        }
        if (::access(target.c_str(), W_OK) != 0) {
            return failure(path, errno);
        }
    }
    TemporaryFile file{target + ".XXXXXX"};
    file.descriptor = ::mkostemp(file.path.data(), O_CLOEXEC);
    if (file.descriptor < 0) {
        const int error = errno;
        file.path.clear();
        return failure(path, error);
    }
    if (const int error = writeTo(file.descriptor, write); error != 0) {
        return failure(path, error);
    }
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::fchmod(file.descriptor, exists ? status.st_mode & 07777 : 0666 & ~mask);
    if (::fsync(file.descriptor) != 0 || ::close(std::exchange(file.descriptor, -1)) != 0 ||
        ::rename(file.path.c_str(), target.c_str()) != 0) {
        return failure(path, errno);
    }
    file.path.clear();
    return {};
}

} // namespace fenmark::exchange
