#include <linux/x11/X11Platform.h>

#include <utility>

namespace orrivane::x11 {

X11Platform::X11Platform(Connection& connection, MainLoop& loop, Settings settings)
    : tree(connection)
    , menus(connection, tree)
    , screens(connection, settings.scale, std::move(settings.userCutout),
              std::move(settings.deviceTree))
    , items(connection, tree, screens)
    , windowList(connection, items)
    , ownWindows(items, tree)
    , workspace(connection, loop, screens, std::move(settings.toolkit))
    , presser(connection, tree, items, menus)
    , accessibility(
          {connection, tree, screens, items, menus, presser},
          [this] { return workspace.activeWindow(); }, std::move(settings.globalMenu))
    , capture(connection, loop, screens, tree, items)
    , stage(connection, loop, screens, tree, items, presser)
    , eventPoster(connection, screens) {
    items.addOwnClient(connection.clientOf(xcb_generate_id(connection.raw())));
    screens.setActiveWindow([this] { return workspace.activeWindow(); });
}

} // namespace orrivane::x11
