#include <linux/support/SmallFile.h>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orrivane {

namespace {

constexpr std::size_t largest = 1 << 20;

// To the end, as files of /proc have a size of nothing.
std::optional<std::string> contentsOf(int file) {
    struct stat status = {};
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    std::string contents;
    std::array<char, 4096> part{};
    while (contents.size() <= largest) {
        const auto count = ::read(file, part.data(), part.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::nullopt;
        if (count > 0) {
            contents.append(part.data(), static_cast<std::size_t>(count));
            continue;
        }
        // Cut short while it was read: what is missing must not be written back.
        const bool isWhole = contents.size() >= static_cast<std::size_t>(status.st_size);
        return isWhole ? std::optional(std::move(contents)) : std::nullopt;
    }
    return std::nullopt;
}

// A pipe must not hold up whoever looks.
int openToRead(const std::string& path) {
    return open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
}

std::optional<std::string> takeContents(int file) {
    auto contents = contentsOf(file);
    close(file);
    return contents;
}

} // namespace

std::optional<std::string> readSmallFile(const std::string& path) {
    const int file = openToRead(path);
    return file < 0 ? std::nullopt : takeContents(file);
}

std::optional<std::string> readSmallFileToReplace(const std::string& path) {
    const int file = openToRead(path);
    if (file < 0)
        return errno == ENOENT ? std::optional<std::string>("") : std::nullopt;
    return takeContents(file);
}

} // namespace orrivane
