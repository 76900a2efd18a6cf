#include <linux/hosts/HostProcess.h>

#include <linux/support/SmallFile.h>

#include <cstdlib>
#include <sys/syscall.h>
#include <unistd.h>

namespace orrivane {

namespace {

// A process that ends while it is read has nothing to say.
std::string contentsOf(const std::string& path) {
    return readSmallFile(path).value_or(std::string());
}

std::vector<std::string> wordsOf(std::string_view text) {
    std::vector<std::string> words;
    while (!text.empty()) {
        const auto end = text.find('\0');
        words.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return words;
}

std::string nameIn(const std::string& folder) {
    auto name = contentsOf(folder + "/comm");
    if (name.ends_with('\n'))
        name.pop_back();
    return name;
}

std::string folderIn(const std::string& proc, std::int32_t id) {
    return proc + "/" + std::to_string(id);
}

bool handles(const std::string& folder, int number) {
    constexpr std::string_view label = "\nSigCgt:";
    const auto status = contentsOf(folder + "/status");
    const auto found = status.find(label);
    if (found == std::string::npos)
        return false;
    const auto caught = std::strtoull(status.c_str() + found + label.size(), nullptr, 16);
    return ((caught >> (number - 1)) & 1U) != 0;
}

} // namespace

std::optional<HostProcess> HostProcess::read(std::int32_t id, const std::string& proc) {
    if (id < 1)
        return std::nullopt;
    const auto folder = folderIn(proc, id);
    HostProcess process{id,
                        nameIn(folder),
                        wordsOf(contentsOf(folder + "/cmdline")),
                        {},
                        wordsOf(contentsOf(folder + "/environ"))};
    if (process.name.empty() || process.arguments.empty())
        return std::nullopt;
    constexpr std::size_t longestPath = 4096;
    std::string target(longestPath, '\0');
    const auto length = readlink((folder + "/cwd").c_str(), target.data(), target.size());
    if (length > 0)
        process.folder = target.substr(0, static_cast<std::size_t>(length));
    return process;
}

std::optional<std::string> HostProcess::variable(std::string_view variable) const {
    for (const auto& each : environment)
        if (each.size() > variable.size() + 1 && each.starts_with(variable) &&
            each[variable.size()] == '=')
            return each.substr(variable.size() + 1);
    return std::nullopt;
}

std::string HostProcess::absolute(const std::string& path) const {
    return path.starts_with('/') || folder.empty() ? path : folder + "/" + path;
}

bool HostProcess::signal(int number, const std::string& proc) const {
    // The descriptor stays with the process: a new one of the same number is not hit by mistake.
    const auto process = static_cast<int>(syscall(SYS_pidfd_open, id, 0));
    if (process < 0)
        return false;
    const auto now = read(id, proc);
    const bool sent = now && now->name == name && handles(folderIn(proc, id), number) &&
                      syscall(SYS_pidfd_send_signal, process, number, nullptr, 0) == 0;
    close(process);
    return sent;
}

} // namespace orrivane
