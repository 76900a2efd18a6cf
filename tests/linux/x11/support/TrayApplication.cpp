// A process with one icon for a tray: tells the icon's window, then every button pressed on it, a
// line each. Arguments: the display, a class, the icon's width. An empty class gives none.

#include "FakeTray.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    using namespace orrivane::x11;
    if (argc != 4)
        return 2;
    XClient client(argv[1]);
    const std::string name = argv[2];
    const auto icon = FakeTray::makeIcon(client, std::atoi(argv[3]), 22);
    if (name.empty())
        client.remove(icon, "WM_CLASS");
    else
        client.setText(icon, "WM_CLASS", name + '\0' + name + '\0');
    client.listen(icon, XCB_EVENT_MASK_BUTTON_PRESS);
    std::printf("window %u\n", icon);
    std::fflush(stdout);
    while (const Owned<xcb_generic_event_t> event{xcb_wait_for_event(client.raw())}) {
        if ((event->response_type & 0x7f) != XCB_BUTTON_PRESS)
            continue;
        const auto& press = reinterpret_cast<const xcb_button_press_event_t&>(*event);
        std::printf("press %u\n", press.detail);
        std::fflush(stdout);
    }
    return 0;
}
