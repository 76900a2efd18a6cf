#import <macos/appkit/MainMenu.h>

#import <AppKit/AppKit.h>

namespace orrivane {

namespace {

void addSubmenu(NSMenu* bar, NSMenu* submenu) {
    NSMenuItem* item = [bar addItemWithTitle:submenu.title action:nil keyEquivalent:@""];
    item.submenu = submenu;
}

NSMenu* makeProgramMenu() {
    auto* menu = [[NSMenu alloc] initWithTitle:@"Orrivane"];
    NSMenuItem* quit = [menu addItemWithTitle:@"Quit Orrivane"
                                       action:@selector(terminate:)
                                keyEquivalent:@"q"];
    quit.target = NSApp;
    return menu;
}

NSMenu* makeWindowMenu() {
    auto* menu = [[NSMenu alloc] initWithTitle:@"Window"];
    [menu addItemWithTitle:@"Close" action:@selector(performClose:) keyEquivalent:@"w"];
    [menu addItemWithTitle:@"Minimize" action:@selector(performMiniaturize:) keyEquivalent:@"m"];
    return menu;
}

NSMenu* makeEditMenu() {
    auto* menu = [[NSMenu alloc] initWithTitle:@"Edit"];
    [menu addItemWithTitle:@"Cut" action:@selector(cut:) keyEquivalent:@"x"];
    [menu addItemWithTitle:@"Copy" action:@selector(copy:) keyEquivalent:@"c"];
    [menu addItemWithTitle:@"Paste" action:@selector(paste:) keyEquivalent:@"v"];
    [menu addItemWithTitle:@"Select All" action:@selector(selectAll:) keyEquivalent:@"a"];
    return menu;
}

} // namespace

NSMenu* makeMainMenu() {
    auto* bar = [[NSMenu alloc] initWithTitle:@""];
    addSubmenu(bar, makeProgramMenu()); // the first one is the program's, whatever its title
    addSubmenu(bar, makeEditMenu());
    addSubmenu(bar, makeWindowMenu());
    return bar;
}

} // namespace orrivane
