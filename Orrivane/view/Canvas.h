#pragma once

#include <Orrivane/view/Drawing.h>

#include <concepts>
#include <memory>
#include <optional>
#include <utility>

namespace orrivane {

/// A value that can be drawn at any size, such as a preview that fills the width there is.
template <typename Value>
concept Drawable = std::equality_comparable<Value> && requires(const Value& value, Size size) {
    { value.drawing(size) } -> std::same_as<Drawing>;
};

/// Some drawable value. Equal when both hold equal values of one type.
class CanvasContent {
  public:
    template <Drawable Value>
    explicit CanvasContent(Value value)
        : model_(std::make_shared<Model<Value>>(std::move(value))) {}

    /// `size` in points; the drawing has that size.
    [[nodiscard]] Drawing drawing(Size size) const { return model_->drawing(size); }

    friend bool operator==(const CanvasContent& a, const CanvasContent& b) {
        return a.model_ == b.model_ || a.model_->equals(*b.model_);
    }

  private:
    struct AnyModel {
        AnyModel() = default;
        AnyModel(const AnyModel&) = delete;
        AnyModel& operator=(const AnyModel&) = delete;
        virtual ~AnyModel() = default;
        [[nodiscard]] virtual Drawing drawing(Size size) const = 0;
        [[nodiscard]] virtual bool equals(const AnyModel& other) const = 0;
    };
    template <typename Value>
    struct Model final : AnyModel {
        explicit Model(Value initial)
            : value(std::move(initial)) {}
        [[nodiscard]] Drawing drawing(Size size) const override { return value.drawing(size); }
        [[nodiscard]] bool equals(const AnyModel& other) const override {
            const auto* same = dynamic_cast<const Model*>(&other);
            return same && same->value == value;
        }
        Value value;
    };

    std::shared_ptr<const AnyModel> model_; // never null
};

/// A place for a drawing. It takes part in no interaction.
struct Canvas {
    CanvasContent content;
    std::optional<double> width; ///< points; absent: all the width there is
    double height = 0;           ///< points

    friend bool operator==(const Canvas&, const Canvas&) = default;
};

} // namespace orrivane
