#include <tools/release-feed/ReleaseFeedTool.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>

namespace orrivane {
namespace {

constexpr const char* usage =
    "Usage: orrivane-release-feed keys\n"
    "       orrivane-release-feed item --key FILE --package FILE --version VERSION --url ADDRESS\n"
    "                                  [--shown VERSION] [--notes FILE] [--notes-link ADDRESS]\n"
    "\"keys\" prints a new pair: the public key for ORRIVANE_FEED_KEY, the secret one for a file "
    "of\n"
    "your own. \"item\" prints the signed entry of a release, to be put into the feed.\n";

using Options = std::map<std::string, std::string>;

int fail(const std::string& sentence) {
    std::fprintf(stderr, "orrivane-release-feed: %s\n", sentence.c_str());
    return 1;
}

std::optional<std::string> contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string trimmed(std::string text) {
    constexpr const char* space = " \t\r\n";
    text.erase(text.find_last_not_of(space) + 1);
    text.erase(0, text.find_first_not_of(space));
    return text;
}

int printItem(const Options& options) {
    const auto value = [&](const char* name) {
        const auto found = options.find(name);
        return found == options.end() ? std::string() : found->second;
    };
    for (const char* needed : {"--key", "--package", "--version", "--url"})
        if (value(needed).empty())
            return fail(std::string(needed) + " is missing");
    const auto key = contents(value("--key"));
    if (!key)
        return fail("the key file " + value("--key") + " cannot be read");
    const auto package = contents(value("--package"));
    if (!package)
        return fail("the package " + value("--package") + " cannot be read");
    ReleaseEntry entry;
    entry.version = value("--version");
    entry.shortVersion = value("--shown");
    entry.title = "Orrivane " + entry.displayVersion();
    entry.notesLink = value("--notes-link");
    entry.system = "linux";
    entry.address = value("--url");
    entry.length = std::to_string(package->size());
    entry.type = "application/vnd.debian.binary-package";
    if (const auto path = value("--notes"); !path.empty()) {
        const auto notes = contents(path);
        if (!notes)
            return fail("the notes " + path + " cannot be read");
        entry.notes = trimmed(*notes);
        entry.notesFormat = path.ends_with(".md") ? "markdown" : "plain-text";
    }
    auto signature = sign(*package, trimmed(*key));
    if (!signature)
        return fail(value("--key") + " does not hold a secret key");
    entry.fileSignature = std::move(*signature);
    if (!signEntry(entry, trimmed(*key)))
        return fail("the entry cannot be written in a feed");
    std::fputs(feedItem(entry).c_str(), stdout);
    return 0;
}

int run(int argc, char** argv) {
    const std::string command = argc > 1 ? argv[1] : "";
    if (command == "keys" && argc == 2) {
        const auto keys = KeyPair::generate();
        std::printf("public: %s\nsecret: %s\n", keys.publicKey.c_str(), keys.secretKey.c_str());
        return keys.publicKey.empty() ? fail("no random numbers can be had") : 0;
    }
    if (command == "--help" || command == "-h") {
        std::fputs(usage, stdout);
        return 0;
    }
    if (command != "item" || argc % 2 != 0) {
        std::fputs(usage, stderr);
        return 2;
    }
    Options options;
    for (int index = 2; index < argc; index += 2) {
        if (std::strncmp(argv[index], "--", 2) != 0) {
            std::fputs(usage, stderr);
            return 2;
        }
        options[argv[index]] = argv[index + 1];
    }
    return printItem(options);
}

} // namespace
} // namespace orrivane

int main(int argc, char** argv) {
    return orrivane::run(argc, argv);
}
