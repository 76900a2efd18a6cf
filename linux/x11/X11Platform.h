#pragma once

#include <linux/x11/Connection.h>
#include <linux/x11/KnownPanels.h>
#include <linux/x11/OpenMenus.h>
#include <linux/x11/Presser.h>
#include <linux/x11/StatusItems.h>
#include <linux/x11/WindowTree.h>
#include <linux/x11/X11Accessibility.h>
#include <linux/x11/X11EventPoster.h>
#include <linux/x11/X11PanelStage.h>
#include <linux/x11/X11ScreenCapture.h>
#include <linux/x11/X11Screens.h>
#include <linux/x11/X11Windows.h>
#include <linux/x11/X11Workspace.h>

namespace orrivane::x11 {

/// The X server's half of the platform, wired. Members stand in the order they are built in: each
/// uses only those before it, and event handlers run in the same order.
struct X11Platform {
    struct Settings {
        double scale = 1; ///< root pixels a point
        CutoutFile userCutout;
        X11Workspace::Toolkit toolkit;
        X11Accessibility::GlobalMenu globalMenu;
        std::string deviceTree = KnownPanels::kernelsFolder;
    };

    /// `connection` and `loop` outlive it.
    X11Platform(Connection& connection, MainLoop& loop, Settings settings);

    WindowTree tree;
    OpenMenus menus;
    X11Screens screens;
    StatusItems items;
    X11WindowList windowList;
    X11OwnWindows ownWindows;
    X11Workspace workspace;
    Presser presser;
    X11Accessibility accessibility;
    X11ScreenCapture capture;
    X11PanelStage stage;
    X11EventPoster eventPoster;
};

} // namespace orrivane::x11
