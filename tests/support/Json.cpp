#include <tests/support/Json.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <stdexcept>
#include <utility>

namespace orrivane {

class Json::Reader {
  public:
    explicit Reader(std::string_view text)
        : text_(text) {}

    Json whole() {
        auto result = value();
        skipBlanks();
        if (at_ != text_.size())
            fail("something follows");
        return result;
    }

  private:
    [[noreturn]] void fail(const char* why) const {
        throw std::runtime_error(std::string(why) + " at " + std::to_string(at_) + " in " +
                                 std::string(text_));
    }
    [[nodiscard]] char peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
    char next() {
        if (at_ == text_.size())
            fail("the end");
        return text_[at_++];
    }
    void skipBlanks() {
        while (at_ < text_.size() && std::string_view(" \t\r\n").find(text_[at_]) != text_.npos)
            ++at_;
    }
    bool take(std::string_view word) {
        const bool found = text_.substr(at_).starts_with(word);
        at_ += found ? word.size() : 0;
        return found;
    }
    void expect(char c) {
        skipBlanks();
        if (next() != c)
            fail("another character was expected");
    }

    Json value() {
        skipBlanks();
        if (peek() == '{')
            return object();
        if (peek() == '[')
            return array();
        if (peek() == '"')
            return text();
        if (take("null"))
            return Json(Kind::null);
        if (peek() == 't' || peek() == 'f')
            return truth();
        return number();
    }

    Json truth() {
        Json result(Kind::truth);
        result.number_ = take("true") ? 1 : 0;
        if (result.number_ == 0 && !take("false"))
            fail("no value");
        return result;
    }

    Json text() {
        Json result(Kind::text);
        result.text_ = string();
        return result;
    }

    Json object() {
        Json result(Kind::object);
        expect('{');
        skipBlanks();
        if (take("}"))
            return result;
        do {
            skipBlanks();
            auto key = string();
            if (std::ranges::find(result.keys_, key) != result.keys_.end())
                fail("a member is there twice");
            expect(':');
            result.keys_.push_back(std::move(key));
            result.members_.push_back(value());
            skipBlanks();
        } while (take(","));
        expect('}');
        return result;
    }

    Json array() {
        Json result(Kind::list);
        expect('[');
        skipBlanks();
        if (take("]"))
            return result;
        do {
            result.members_.push_back(value());
            skipBlanks();
        } while (take(","));
        expect(']');
        return result;
    }

    void digits() {
        const auto begin = at_;
        while (peek() >= '0' && peek() <= '9')
            ++at_;
        if (at_ == begin)
            fail("no value");
    }

    Json number() {
        const auto begin = at_;
        take("-");
        if (!take("0"))
            digits();
        if (take("."))
            digits();
        Json result(Kind::number);
        result.number_ = std::stod(std::string(text_.substr(begin, at_ - begin)));
        return result;
    }

    std::string string() {
        if (next() != '"')
            fail("a string was expected");
        std::string result;
        while (peek() != '"') {
            const auto byte = static_cast<unsigned char>(next());
            if (byte < 0x20)
                fail("a control character in a string");
            if (byte == '\\')
                result += escaped();
            else if (byte < 0x80)
                result += static_cast<char>(byte);
            else
                result += sequence(byte);
        }
        ++at_;
        return result;
    }

    char escaped() {
        const char c = next();
        if (c == '"' || c == '\\' || c == '/')
            return c;
        unsigned code = 0;
        const auto hex = text_.substr(at_, 4);
        // No more is needed here than the control characters.
        if (c != 'u' || hex.size() != 4 ||
            std::from_chars(hex.data(), hex.data() + 4, code, 16).ptr != hex.data() + 4 ||
            code >= 0x80)
            fail("an unknown escape");
        at_ += 4;
        return static_cast<char>(code);
    }

    std::string sequence(unsigned char first) {
        const int more = first >= 0xf0 ? 3 : first >= 0xe0 ? 2 : 1;
        std::uint32_t code = first & (0x3fU >> more);
        std::string bytes(1, static_cast<char>(first));
        for (int i = 0; i < more; ++i) {
            const auto byte = static_cast<unsigned char>(next());
            if ((byte & 0xc0) != 0x80)
                fail("no UTF-8");
            code = code << 6 | (byte & 0x3fU);
            bytes += static_cast<char>(byte);
        }
        const std::uint32_t least = more == 3 ? 0x10000 : more == 2 ? 0x800 : 0x80;
        if (first < 0xc0 || code < least || code > 0x10ffff || (code >= 0xd800 && code < 0xe000))
            fail("no UTF-8");
        return bytes;
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

Json Json::parse(std::string_view text) {
    return Reader(text).whole();
}

const Json& Json::of(Kind kind) const {
    if (kind_ != kind)
        throw std::runtime_error("the value is of another type");
    return *this;
}

const Json& Json::operator[](std::string_view key) const {
    const auto& keys = of(Kind::object).keys_;
    const auto found = std::ranges::find(keys, key);
    if (found == keys.end())
        throw std::runtime_error("there is no member " + std::string(key));
    return members_[static_cast<std::size_t>(found - keys.begin())];
}

std::vector<double> Json::numbers() const {
    std::vector<double> result;
    for (const auto& member : list())
        result.push_back(member.number());
    return result;
}

} // namespace orrivane
