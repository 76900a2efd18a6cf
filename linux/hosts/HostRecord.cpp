#include <linux/hosts/HostRecord.h>

#include <linux/support/AtomicFile.h>
#include <linux/support/SmallFile.h>
#include <linux/support/Text.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
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

Outcome homeless() {
    return Outcome::failure("there is no home folder to keep the tray's own settings in");
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

Outcome HostRecord::heldBy(const FileLock& lock) const {
    if (path_.empty())
        return homeless();
    return lock.isHeld() ? Outcome::success()
                         : Outcome::failure("another program is at work on " + path_);
}

bool HostRecord::exists() const {
    return access(path_.c_str(), F_OK) == 0;
}

std::optional<HostRecord::Fields> HostRecord::read() const {
    const auto contents = readSmallFile(path_);
    return contents ? parse(*contents) : std::nullopt;
}

Outcome HostRecord::write(const Fields& fields) const {
    if (path_.empty())
        return homeless();
    if (exists() && !read() && std::rename(path_.c_str(), (path_ + ".damaged").c_str()) != 0)
        return failure("put aside", std::strerror(errno));
    const auto written = replaceFile(path_, text(fields));
    return written ? Outcome::success() : failure("written", written.text());
}

Outcome HostRecord::restore(const std::optional<Fields>& before) const {
    if (before)
        return write(*before);
    if (path_.empty() || unlink(path_.c_str()) == 0 || errno == ENOENT)
        return Outcome::success();
    return failure("removed", std::strerror(errno));
}

Outcome HostRecord::failure(const char* what, const std::string& why) const {
    return Outcome::failure("the record " + path_ + " cannot be " + what + " (" + why + ")");
}

std::string HostRecord::field(const Fields& fields, std::string_view name) {
    const auto found = fields.find(name);
    return found == fields.end() ? std::string() : found->second;
}

} // namespace orrivane
