#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orrivane {

/// A parsed JSON text, read strictly: whatever RFC 8259 does not allow is an error, and so are
/// bytes that are no UTF-8 and a member that an object has twice.
class Json {
  public:
    /// Throws std::runtime_error that says where the text is wrong.
    static Json parse(std::string_view text);

    // Throw when the value is of another type, or has no such member.
    [[nodiscard]] bool isNull() const { return kind_ == Kind::null; }
    [[nodiscard]] bool truth() const { return of(Kind::truth).number_ != 0; }
    [[nodiscard]] double number() const { return of(Kind::number).number_; }
    [[nodiscard]] const std::string& text() const { return of(Kind::text).text_; }
    [[nodiscard]] const std::vector<Json>& list() const { return of(Kind::list).members_; }
    [[nodiscard]] const Json& operator[](std::string_view key) const;
    [[nodiscard]] const Json& operator[](std::size_t index) const { return list().at(index); }
    [[nodiscard]] std::vector<double> numbers() const;

  private:
    class Reader;
    enum class Kind { null, truth, number, text, list, object };

    explicit Json(Kind kind)
        : kind_(kind) {}
    [[nodiscard]] const Json& of(Kind kind) const;

    Kind kind_;
    double number_ = 0;
    std::string text_;
    std::vector<std::string> keys_; // of an object, in the order of its members
    std::vector<Json> members_;
};

} // namespace orrivane
