#include <desktop/support/ChoiceLog.h>

#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

namespace orrivane::desktop {

void logChoice(const std::string& who, const std::string& what) {
    const char* path = std::getenv("ORRIVANE_DESKTOP_LOG");
    if (path == nullptr || *path == '\0')
        return;
    const std::string line = who + ": " + what + "\n";
    const int file = ::open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0 || ::write(file, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
        std::perror(path);
    if (file >= 0)
        ::close(file);
}

} // namespace orrivane::desktop
