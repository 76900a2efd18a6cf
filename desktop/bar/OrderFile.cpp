#include <desktop/bar/OrderFile.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace orrivane::desktop {

OrderFile OrderFile::ofSession() {
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    return OrderFile(folder && *folder == '/' ? std::string(folder) + "/orrivane-desktop-order"
                                              : std::string());
}

std::vector<ItemKey> OrderFile::read() const {
    std::vector<ItemKey> order;
    std::ifstream file(path_);
    for (std::string line; order.size() < ItemRow::mostRemembered && std::getline(file, line);) {
        int ordinal = 0;
        const auto* end = line.data() + line.size();
        const auto [stop, error] = std::from_chars(line.data(), end, ordinal);
        if (error == std::errc() && ordinal >= 0 && stop != end && *stop == ' ')
            order.push_back({std::string(stop + 1, end), ordinal});
    }
    return order;
}

bool OrderFile::write(const std::vector<ItemKey>& order) const {
    if (path_.empty())
        return false;
    const auto unfinished = path_ + ".new";
    std::ofstream file(unfinished, std::ios::trunc);
    for (const auto& key : order)
        file << key.ordinal << ' ' << keptName(key.application) << '\n';
    file.close();
    return file && std::rename(unfinished.c_str(), path_.c_str()) == 0;
}

std::string OrderFile::keptName(std::string_view application) {
    std::string name(application);
    const auto endsALine = [](char c) { return c == '\n' || c == '\r' || c == '\0'; };
    std::ranges::replace_if(name, endsALine, ' ');
    return name;
}

} // namespace orrivane::desktop
