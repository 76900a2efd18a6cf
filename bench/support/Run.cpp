#include "Run.h"

#include <chrono>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orrivane::bench {

double runToEnd(const std::vector<std::string>& arguments, const std::string& display) {
    setenv("DISPLAY", display.c_str(), 1);
    std::vector<char*> argv;
    for (const auto& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const auto begin = std::chrono::steady_clock::now();
    pid_t pid = 0;
    const int problem = posix_spawnp(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (problem != 0 || waitpid(pid, &status, 0) != pid || status != 0)
        throw std::runtime_error(arguments[0] + " did not run to a good end");
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - begin;
    return taken.count();
}

} // namespace orrivane::bench
