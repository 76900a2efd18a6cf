#pragma once

#include <Orrivane/platform/Accessibility.h>

#include <linux/x11/OpenMenus.h>
#include <linux/x11/Owners.h>
#include <linux/x11/Presser.h>
#include <linux/x11/StatusItems.h>

#include <functional>
#include <optional>

namespace orrivane::x11 {

/// Tray icons, their processes and the bar, served as accessibility elements: an application has
/// its icons for an extras menu bar, an icon's open menu for a child, and the frontmost one the
/// stretch of the bar that its menus, or the dock's own content, take. Nothing here asks another
/// process, so nothing can hang on one.
class X11Accessibility : public Accessibility {
  public:
    /// The right edge, in root pixels, of a global menu that this process shows inside the band.
    using GlobalMenu = std::function<std::optional<int>(std::int32_t process, PixelRect band)>;

    struct Parts {
        Connection& connection;
        WindowTree& tree;
        X11Screens& screens;
        StatusItems& items;
        OpenMenus& menus;
        Presser& presser;
    };

    X11Accessibility(const Parts& parts, std::function<std::uint32_t()> activeWindow,
                     GlobalMenu globalMenu);

    std::vector<RunningApplication> runningApplications() override;
    std::optional<RunningApplication> menuBarOwningApplication() override;
    std::optional<RunningApplication> frontmostApplication() override;
    AccessibilityElement applicationElement(std::int32_t processIdentifier) override;
    void setMessagingTimeout(const AccessibilityElement& element, float seconds) override;
    std::optional<AttributeValue> copyAttributeValue(const AccessibilityElement& element,
                                                     std::string_view attribute) override;
    int performAction(const AccessibilityElement& element, std::string_view action) override;
    bool statusItemsHaveSecondaryAction() override { return true; }
    bool isTrusted() override;

  private:
    struct Element;
    struct Owned;

    [[nodiscard]] std::optional<AttributeValue> ofApplication(const Element& element,
                                                              std::string_view attribute);
    [[nodiscard]] std::optional<AttributeValue> ofItem(const Element& element,
                                                       std::string_view attribute);
    [[nodiscard]] std::optional<AttributeValue> ofMenuBar(const Element& element,
                                                          std::string_view attribute);
    [[nodiscard]] WindowOwner ownerOf(std::uint32_t window);
    [[nodiscard]] std::vector<Owned> ownedItems();
    [[nodiscard]] AccessibilityElementList itemsOf(std::int32_t process);
    [[nodiscard]] const StatusItem* itemOf(const Element& element);
    /// The bar's rectangle and where its menus end, root pixels; absent without a dock.
    struct Bar {
        PixelRect rect;
        int menuEnd;
    };
    [[nodiscard]] std::optional<Bar> bar(std::int32_t process);

    Parts parts_;
    Owners owners_;
    std::function<std::uint32_t()> activeWindow_;
    GlobalMenu globalMenu_;
};

} // namespace orrivane::x11
