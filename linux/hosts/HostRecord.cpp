#include <linux/hosts/HostRecord.h>

#include <linux/support/AtomicFile.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orrivane {

namespace {

constexpr std::string_view heading = "orrivane host record 1";
constexpr std::string_view ending = "end"; // without it the file was cut short

std::string escaped(std::string_view value) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result;
    for (const char letter : value) {
        const auto byte = static_cast<unsigned char>(letter);
        if (byte >= 0x20 && byte != '%' && byte != 0x7f)
            result += letter;
        else
            result += {'%', digits[byte >> 4], digits[byte & 0xf]};
    }
    return result;
}

std::optional<std::string> unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            result += text[i];
            continue;
        }
        unsigned byte = 0;
        const auto* first = text.data() + i + 1;
        if (i + 2 >= text.size() || std::from_chars(first, first + 2, byte, 16).ptr != first + 2)
            return std::nullopt;
        result += static_cast<char>(byte);
        i += 2;
    }
    return result;
}

std::string_view takeLine(std::string_view& text) {
    const auto end = text.find('\n');
    const auto line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

} // namespace

std::string HostRecord::text(const Fields& fields) {
    auto result = std::string(heading) + "\n";
    for (const auto& [name, value] : fields)
        result += name + "=" + escaped(value) + "\n";
    return result + std::string(ending) + "\n";
}

std::optional<HostRecord::Fields> HostRecord::parse(std::string_view text) {
    if (takeLine(text) != heading)
        return std::nullopt;
    Fields fields;
    while (!text.empty()) {
        const auto line = takeLine(text);
        if (line == ending)
            return text.empty() ? std::optional(fields) : std::nullopt;
        const auto sign = line.find('=');
        const auto value = unescaped(line.substr(sign + 1));
        if (sign == std::string_view::npos || !value)
            return std::nullopt;
        fields.insert_or_assign(std::string(line.substr(0, sign)), *value);
    }
    return std::nullopt;
}

bool HostRecord::exists() const {
    return access(path_.c_str(), F_OK) == 0;
}

std::optional<HostRecord::Fields> HostRecord::read() const {
    const auto contents = readSmallFile(path_);
    return contents ? parse(*contents) : std::nullopt;
}

bool HostRecord::write(const Fields& fields) const {
    if (path_.empty())
        return false;
    if (const auto before = readSmallFile(path_);
        before && !parse(*before) && std::rename(path_.c_str(), (path_ + ".damaged").c_str()) != 0)
        return false;
    return !replaceFile(path_, text(fields));
}

void HostRecord::restore(const std::optional<Fields>& before) const {
    if (before)
        static_cast<void>(write(*before));
    else if (!path_.empty())
        unlink(path_.c_str());
}

std::optional<std::string> readSmallFile(const std::string& path) {
    constexpr off_t largest = 1 << 20;
    // A pipe must not hold up whoever looks.
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return std::nullopt;
    struct stat status = {};
    std::optional<std::string> contents;
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size <= largest) {
        contents.emplace(static_cast<std::size_t>(status.st_size), '\0');
        std::size_t length = 0;
        ssize_t count = 0;
        while (length < contents->size() &&
               ((count = ::read(file, contents->data() + length, contents->size() - length)) > 0 ||
                (count < 0 && errno == EINTR)))
            length += count > 0 ? static_cast<std::size_t>(count) : 0;
        // Cut short while it was read: what is missing must not be written back.
        if (length < contents->size())
            contents.reset();
    }
    close(file);
    return contents;
}

} // namespace orrivane
