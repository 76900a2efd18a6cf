#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace orrivane {

/// A package on its way to the disk. Unless it is kept, nothing of it stays.
class PackageFile {
  public:
    PackageFile(std::string folder, std::string name);
    PackageFile(const PackageFile&) = delete;
    PackageFile& operator=(const PackageFile&) = delete;
    ~PackageFile();

    /// A sentence for the user when it cannot be made, written or read.
    [[nodiscard]] std::optional<std::string> open();
    [[nodiscard]] std::optional<std::string> write(std::string_view bytes);
    /// Calls `isGood` with everything that was written, as it is read back from the disk. False
    /// also when it cannot be read.
    template <typename Predicate>
    [[nodiscard]] bool contentsAre(Predicate isGood) const {
        const Mapping mapping(file_);
        return mapping.bytes() && isGood(*mapping.bytes());
    }
    /// Gives the file its name and leaves it there.
    [[nodiscard]] std::optional<std::string> keep();

    [[nodiscard]] std::string path() const { return folder_ + '/' + name_; }

  private:
    class Mapping {
      public:
        explicit Mapping(int file);
        Mapping(const Mapping&) = delete;
        Mapping& operator=(const Mapping&) = delete;
        ~Mapping();

        [[nodiscard]] const std::optional<std::span<const unsigned char>>& bytes() const {
            return bytes_;
        }

      private:
        std::optional<std::span<const unsigned char>> bytes_;
    };

    [[nodiscard]] std::string partPath() const { return path() + ".part"; }
    [[nodiscard]] std::string problem(const char* what) const;

    std::string folder_;
    std::string name_;
    int file_ = -1;
    bool kept_ = false;
};

/// The folder of this user alone where packages wait for the installer.
class PackageFolder {
  public:
    /// An empty path, as of a user without a home, takes no package.
    explicit PackageFolder(std::string path)
        : path_(std::move(path)) {}

    /// The folder in the user's cache.
    static PackageFolder ofUser();

    /// Removes what earlier updates left, unfinished files and packages alike; nothing else.
    void clear() const;
    /// A file in the emptied folder. `name` has no folder in it.
    [[nodiscard]] std::unique_ptr<PackageFile> create(const std::string& name) const;

    [[nodiscard]] const std::string& path() const { return path_; }

  private:
    std::string path_; // absolute or empty
};

} // namespace orrivane
