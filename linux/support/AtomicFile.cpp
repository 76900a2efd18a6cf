#include <linux/support/AtomicFile.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace orrivane {

namespace {

Outcome lastError() {
    return Outcome::failure(std::strerror(errno));
}

bool writeAll(int file, std::string_view contents) {
    while (!contents.empty()) {
        const auto count = ::write(file, contents.data(), contents.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        contents.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

mode_t modeOf(const std::string& path) {
    struct stat status = {};
    constexpr mode_t ordinary = 0644;
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : ordinary;
}

// Where a link leads, also if nothing is there yet.
std::string target(const std::string& path) {
    std::error_code error;
    auto resolved = std::filesystem::weakly_canonical(path, error);
    return error ? path : resolved.string();
}

} // namespace

Outcome replaceFile(const std::string& path, std::string_view contents) {
    if (path.empty())
        return Outcome::failure("it has no name");
    const auto file = target(path);
    const auto folder = std::filesystem::path(file).parent_path().string();
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        return Outcome::failure(error.message());
    auto name = file + ".XXXXXX";
    std::vector<char> temporary(name.c_str(), name.c_str() + name.size() + 1);
    const int descriptor = mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0)
        return lastError();
    const bool written = writeAll(descriptor, contents) && fchmod(descriptor, modeOf(file)) == 0 &&
                         fsync(descriptor) == 0;
    auto outcome = written ? Outcome::success() : lastError();
    if (close(descriptor) != 0 && outcome)
        outcome = lastError();
    if (outcome && rename(temporary.data(), file.c_str()) != 0)
        outcome = lastError();
    if (!outcome) {
        unlink(temporary.data());
        return outcome;
    }
    // The name reaches the disk, too.
    if (const int parent = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); parent >= 0) {
        fsync(parent);
        close(parent);
    }
    return outcome;
}

FileLock::FileLock(const std::string& path) {
    if (path.empty())
        return;
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
    file_ = open((path + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (file_ < 0)
        return;
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(250);
    while (!(held_ = flock(file_, LOCK_EX | LOCK_NB) == 0) &&
           std::chrono::steady_clock::now() < until)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

FileLock::~FileLock() {
    if (file_ >= 0)
        close(file_);
}

} // namespace orrivane
