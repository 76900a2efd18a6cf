#include <linux/x11/CutoutFile.h>

#include <Orrivane/CommandLine.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <system_error>
#include <unistd.h>

namespace orrivane::x11 {

CutoutFile CutoutFile::ofUser() {
    const char* configured = std::getenv("XDG_CONFIG_HOME");
    const char* home = std::getenv("HOME");
    std::filesystem::path folder;
    if (configured && *configured == '/')
        folder = configured;
    else
        folder = std::filesystem::path(home ? home : "/") / ".config";
    return CutoutFile(folder / "orrivane" / "notch");
}

std::optional<Rect> CutoutFile::read() const {
    std::ifstream file(path_);
    std::string line;
    if (!std::getline(file, line))
        return std::nullopt;
    const auto parsed = CommandLine::parseNotch(line);
    const auto* cutout = std::get_if<Rect>(&parsed);
    return cutout ? std::optional(*cutout) : std::nullopt;
}

std::optional<std::string> CutoutFile::write(const Rect& cutout) const {
    std::error_code error;
    std::filesystem::create_directories(path_.parent_path(), error);
    auto temporary = path_;
    temporary += std::string(".").append(std::to_string(getpid()));
    std::ostringstream line;
    line.imbue(std::locale::classic());
    line.precision(12);
    line << cutout.minX() << ',' << cutout.minY() << ',' << cutout.width() << ',' << cutout.height()
         << '\n';
    std::ofstream file(temporary, std::ios::trunc);
    file << line.str();
    file.close();
    if (file)
        std::filesystem::rename(temporary, path_, error);
    if (!file || error) {
        std::error_code ignored;
        std::filesystem::remove(temporary, ignored);
        return "The notch could not be stored in " + path_.string() +
               "; make sure that you may write there and that the disk is not full.";
    }
    return std::nullopt;
}

} // namespace orrivane::x11
