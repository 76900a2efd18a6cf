#include <linux/updater/PackageFolder.h>

#include <linux/support/UserFolders.h>

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vector>

namespace orrivane {

namespace {

constexpr mode_t ownerOnly = 0700;
constexpr mode_t readable = 0644; // the folder keeps others out

bool makeFolders(const std::string& path) {
    for (auto slash = path.find('/', 1); slash != std::string::npos;
         slash = path.find('/', slash + 1))
        mkdir(path.substr(0, slash).c_str(), ownerOnly);
    return mkdir(path.c_str(), ownerOnly) == 0 || errno == EEXIST;
}

// A link or a folder of somebody else could show the installer another file than was verified.
bool isOwnFolder(const std::string& path) {
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == geteuid() && chmod(path.c_str(), ownerOnly) == 0;
}

bool isLeftOver(std::string_view name) {
    return name.ends_with(".deb") || name.ends_with(".deb.part");
}

} // namespace

PackageFile::PackageFile(std::string folder, std::string name)
    : folder_(std::move(folder))
    , name_(std::move(name)) {}

PackageFile::~PackageFile() {
    if (file_ >= 0) {
        close(file_);
        if (!kept_)
            unlink(partPath().c_str());
    }
}

std::optional<std::string> PackageFile::open() {
    if (folder_.empty())
        return "There is no home folder to keep the package in; set HOME and try again.";
    if (!makeFolders(folder_))
        return problem("The folder for packages cannot be made");
    if (!isOwnFolder(folder_))
        return "The folder " + folder_ + " does not belong to you alone; remove it and try again.";
    file_ =
        ::open(partPath().c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, readable);
    if (file_ < 0)
        return problem("The package cannot be written");
    return std::nullopt;
}

std::optional<std::string> PackageFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = ::write(file_, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return problem("The package cannot be written");
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return std::nullopt;
}

std::optional<std::string> PackageFile::keep() {
    if (fsync(file_) != 0 || rename(partPath().c_str(), path().c_str()) != 0)
        return problem("The package cannot be written");
    kept_ = true;
    return std::nullopt;
}

std::string PackageFile::problem(const char* what) const {
    const int error = errno;
    auto text = std::string(what) + ": " + std::strerror(error) + ". ";
    if (error == ENOSPC || error == EDQUOT)
        return text + "Make room in " + folder_ + " and try again.";
    return text + "Make " + folder_ + " writable and try again.";
}

PackageFile::Mapping::Mapping(int file) {
    struct stat status = {};
    if (fstat(file, &status) != 0 || status.st_size <= 0)
        return;
    const auto size = static_cast<std::size_t>(status.st_size);
    void* memory = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    if (memory != MAP_FAILED)
        bytes_ = std::span(static_cast<const unsigned char*>(memory), size);
}

PackageFile::Mapping::~Mapping() {
    if (bytes_)
        munmap(const_cast<unsigned char*>(bytes_->data()), bytes_->size());
}

PackageFolder PackageFolder::ofUser() {
    // A folder that others can write to is no substitute for a home: whoever owns it could exchange
    // the package after it was verified.
    return PackageFolder(UserFolders::file(UserFolders::ofThisUser().cache, "orrivane/updates"));
}

void PackageFolder::clear() const {
    if (!isOwnFolder(path_))
        return;
    DIR* folder = opendir(path_.c_str());
    if (!folder)
        return;
    std::vector<std::string> names;
    while (const dirent* entry = readdir(folder))
        if (isLeftOver(entry->d_name))
            names.emplace_back(entry->d_name);
    closedir(folder);
    for (const auto& name : names)
        unlink((path_ + '/' + name).c_str());
}

std::unique_ptr<PackageFile> PackageFolder::create(const std::string& name) const {
    clear();
    return std::make_unique<PackageFile>(path_, name);
}

} // namespace orrivane
