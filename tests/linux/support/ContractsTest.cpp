#include <linux/support/AutostartService.h>
#include <linux/support/MenuBarPreferenceStore.h>
#include <linux/support/SpawnLauncher.h>

#include <tests/support/contracts/GlobalPreferencesContract.h>
#include <tests/support/contracts/LoginServiceContract.h>
#include <tests/support/contracts/ProcessLauncherContract.h>

#include "TempDirectory.h"
#include "WaitFor.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace orrivane {
namespace {

/// A file of a folder that belongs to the test.
struct FileWorld {
    e2e::TempDirectory directory;
    std::filesystem::path folder = std::filesystem::path(directory.path()) / "configuration";

    template <typename Predicate>
    bool pumpUntil(Predicate holds) {
        return bool(e2e::waitFor("the contract's condition", holds));
    }
    /// A file in the folder's place stops everyone, the superuser too.
    bool blockFolder() {
        std::filesystem::remove_all(folder);
        return bool(std::ofstream(folder) << "");
    }
};

struct PreferencesWorld : FileWorld {
    std::string path = (folder / "menu-bar.conf").string();
    std::optional<MenuBarPreferenceStore> body{std::in_place, path};

    GlobalPreferences& preferences() { return *body; }
    void reopen() { body.emplace(path); }
    bool storeText(std::string_view key) {
        std::filesystem::create_directories(folder);
        return bool(std::ofstream(path) << key << " = wide\n");
    }
    bool makeUnwritable() { return blockFolder(); }
};
INSTANTIATE_TYPED_TEST_SUITE_P(File, GlobalPreferencesContract, PreferencesWorld);

struct AutostartWorld : FileWorld {
    std::string path = (folder / "orrivane.desktop").string();
    std::optional<AutostartService> body{std::in_place, path, "/usr/bin/orrivane"};

    LoginService& service() { return *body; }
    void reopen() { body.emplace(path, "/usr/bin/orrivane"); }
    bool refuse() { return blockFolder(); }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Autostart, LoginServiceContract, AutostartWorld);

struct SpawnWorld : FileWorld {
    SpawnLauncher body;

    ProcessLauncher& launcher() { return body; }
    std::string program() { return script("program", 0); }
    std::string failingProgram() { return script("failing", 1); }
    [[nodiscard]] std::string missingProgram() const { return (folder / "missing").string(); }
    [[nodiscard]] std::optional<std::vector<std::string>> argumentsSeen() const {
        std::ifstream file(folder / "seen");
        if (!file)
            return std::nullopt;
        std::vector<std::string> words;
        for (std::string word; std::getline(file, word, '\0');)
            words.push_back(word);
        return words;
    }

  private:
    // The list appears under its name when it is complete.
    [[nodiscard]] std::string script(const std::string& name, int status) const {
        std::filesystem::create_directories(folder);
        const auto path = folder / name;
        std::ofstream(path) << "#!/bin/sh\ncd \"${0%/*}\" || exit\n"
                               "for word; do printf '%s\\0' \"$word\"; done > seen.new\n"
                               "mv seen.new seen\nexit "
                            << status << "\n";
        std::filesystem::permissions(path, std::filesystem::perms(0700));
        return path.string();
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Spawn, ProcessLauncherContract, SpawnWorld);

} // namespace
} // namespace orrivane
