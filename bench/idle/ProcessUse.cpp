#include "ProcessUse.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace orrivane::bench {

namespace {

// The number after `label` in a file of labelled lines; 0 when there is none.
double labelled(const std::string& path, const std::string& label) {
    std::ifstream file(path);
    for (std::string word; file >> word;)
        if (word == label) {
            double value = 0;
            file >> value;
            return value;
        }
    return 0;
}

ProcessUse::Thread threadIn(const std::string& folder) {
    ProcessUse::Thread thread;
    std::ifstream(folder + "/comm") >> thread.name;
    double nanoseconds = 0;
    std::ifstream(folder + "/schedstat") >> nanoseconds;
    thread.cpuMilliseconds = nanoseconds / 1e6;
    thread.wakeUps =
        static_cast<std::uint64_t>(labelled(folder + "/status", "voluntary_ctxt_switches:"));
    return thread;
}

} // namespace

ProcessUse ProcessUse::of(pid_t process) {
    const std::string folder = "/proc/" + std::to_string(process);
    if (!std::filesystem::exists(folder))
        throw std::runtime_error("a measured process has ended");
    ProcessUse use;
    for (const auto& entry : std::filesystem::directory_iterator(folder + "/task"))
        use.threads[std::stoi(entry.path().filename())] = threadIn(entry.path());
    const auto memory = folder + "/smaps_rollup";
    use.pssMebibytes = labelled(memory, "Pss:") / 1024;
    use.privateMebibytes =
        (labelled(memory, "Private_Clean:") + labelled(memory, "Private_Dirty:")) / 1024;
    return use;
}

ProcessUse ProcessUse::since(const ProcessUse& earlier) const {
    ProcessUse difference = *this;
    for (auto& [id, thread] : difference.threads)
        if (const auto before = earlier.threads.find(id); before != earlier.threads.end()) {
            thread.cpuMilliseconds -= before->second.cpuMilliseconds;
            thread.wakeUps -= before->second.wakeUps;
        }
    return difference;
}

double ProcessUse::cpuMilliseconds() const {
    double sum = 0;
    for (const auto& [id, thread] : threads)
        sum += thread.cpuMilliseconds;
    return sum;
}

std::uint64_t ProcessUse::wakeUps() const {
    std::uint64_t sum = 0;
    for (const auto& [id, thread] : threads)
        sum += thread.wakeUps;
    return sum;
}

} // namespace orrivane::bench
