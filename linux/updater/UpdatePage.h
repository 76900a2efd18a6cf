#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orrivane {

enum class UpdateChoice { install, later, skip, cancel, close };

struct UpdateButton {
    std::string label;
    UpdateChoice choice;
};

/// What is new in a release, as its developers wrote it.
struct ReleaseNotes {
    enum class Format { plain, markdown, html };

    std::string text;
    Format format = Format::plain;
    std::string link; ///< an address with more; may be empty
};

/// What the updater's window shows.
struct UpdatePage {
    std::string headline;
    std::string text;
    std::optional<ReleaseNotes> notes;
    bool isBusy = false;                        ///< something is under way
    std::optional<double> progress;             ///< 0 to 1; absent while nobody knows how far it is
    std::vector<UpdateButton> buttons;          ///< from the left; the last one is the default
    UpdateChoice onClose = UpdateChoice::close; ///< also of Escape
};

/// Shows one page at a time.
class UpdatePresenter {
  public:
    virtual ~UpdatePresenter() = default;

    /// Replaces what is shown; brings the window forward only if it was not open. `chosen` is
    /// called once at most, on the main thread, never inside the call.
    virtual void present(const UpdatePage& page, std::function<void(UpdateChoice)> chosen) = 0;
    virtual void setProgress(double part) = 0;
    /// Brings an open window in front of the others, with the keyboard.
    virtual void bringForward() = 0;
    virtual void dismiss() = 0;
    /// Whether one of the program's windows is the active one.
    [[nodiscard]] virtual bool hasFocus() const = 0;
};

} // namespace orrivane
