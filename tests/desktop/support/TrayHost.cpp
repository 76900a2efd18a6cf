#include "TrayHost.h"

#include "TempDirectory.h"

#include <algorithm>
#include <stdexcept>

namespace orrivane::e2e {

namespace {

using Files = std::map<std::string, std::string>;

std::string number(int value) {
    return std::to_string(value);
}

TrayHost trayer() {
    TrayHost host;
    host.name = host.package = "trayer";
    host.arguments = {"trayer",  "--edge",
                      "top",     "--align",
                      "right",   "--widthtype",
                      "request", "--heighttype",
                      "pixel",   "--SetDockType",
                      "true",    "--expand",
                      "true",    "--SetPartialStrut",
                      "true"};
    host.placeArguments = [](const HostPlace& place) {
        return std::vector<std::string>{"--height", number(place.barHeight), "--margin",
                                        number(place.screenWidth - place.trayRight)};
    };
    return host;
}

TrayHost tint2() {
    TrayHost host;
    host.name = host.package = "tint2";
    host.arguments = {"tint2", "-c", "$HOME/.config/tint2/tint2rc"};
    // An empty separator right of the tray puts the icons where the place says.
    host.files = [](const HostPlace& place) {
        return Files{{".config/tint2/tint2rc",
                      "panel_items = FS:\npanel_size = 100% " + number(place.barHeight) +
                          "\npanel_position = top center horizontal\npanel_layer = top\n"
                          "panel_dock = 0\nwm_menu = 0\nstrut_policy = follow_size\n"
                          "systray_padding = 0 0 6\nsystray_icon_size = 24\n"
                          "systray_sort = left2right\nseparator = new\nseparator_size = " +
                          number(place.screenWidth - place.trayRight) +
                          "\nseparator_style = empty\nseparator_padding = 0 0\n"}};
    };
    return host;
}

TrayHost lxpanel() {
    TrayHost host;
    host.name = host.package = "lxpanel";
    host.arguments = {"lxpanel", "-p", "trial"};
    host.files = [](const HostPlace& place) {
        return Files{{".config/lxpanel/trial/panels/panel",
                      "Global {\n  edge=top\n  allign=left\n  margin=0\n  widthtype=percent\n"
                      "  width=100\n  height=" +
                          number(place.barHeight) +
                          "\n  iconsize=24\n  setdocktype=1\n  setpartialstrut=1\n}\n"
                          "Plugin {\n  type=space\n  expand=1\n  Config {\n    Size=2\n  }\n}\n"
                          "Plugin {\n  type=tray\n  Config {\n  }\n}\n"
                          "Plugin {\n  type=space\n  Config {\n    Size=" +
                          number(place.screenWidth - place.trayRight) + "\n  }\n}\n"}};
    };
    return host;
}

std::string xfceSpring(const std::string& plugin) {
    return "    <property name=\"" + plugin +
           "\" type=\"string\" value=\"separator\">\n"
           "      <property name=\"expand\" type=\"bool\" value=\"true\"/>\n"
           "      <property name=\"style\" type=\"uint\" value=\"0\"/>\n    </property>\n";
}

TrayHost xfcePanel() {
    TrayHost host;
    host.name = host.package = "xfce4-panel";
    host.takesStatusNotifiers = true;
    // Its separators have no width of their own: two springs keep the tray in the middle.
    host.obeysTrayRight = false;
    host.arguments = {"xfce4-panel", "--disable-wm-check"};
    host.files = [](const HostPlace& place) {
        return Files{
            {".config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml",
             "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
             "<channel name=\"xfce4-panel\" version=\"1.0\">\n"
             "  <property name=\"configver\" type=\"int\" value=\"2\"/>\n"
             "  <property name=\"panels\" type=\"array\">\n    <value type=\"int\" value=\"1\"/>\n"
             "    <property name=\"panel-1\" type=\"empty\">\n"
             "      <property name=\"position\" type=\"string\" value=\"p=6;x=0;y=0\"/>\n"
             "      <property name=\"length\" type=\"uint\" value=\"100\"/>\n"
             "      <property name=\"position-locked\" type=\"bool\" value=\"true\"/>\n"
             "      <property name=\"size\" type=\"uint\" value=\"" +
                 number(place.barHeight) +
                 "\"/>\n      <property name=\"plugin-ids\" type=\"array\">\n"
                 "        <value type=\"int\" value=\"1\"/>\n"
                 "        <value type=\"int\" value=\"2\"/>\n"
                 "        <value type=\"int\" value=\"3\"/>\n"
                 "      </property>\n    </property>\n  </property>\n"
                 "  <property name=\"plugins\" type=\"empty\">\n" +
                 xfceSpring("plugin-1") +
                 "    <property name=\"plugin-2\" type=\"string\" value=\"systray\">\n"
                 "      <property name=\"square-icons\" type=\"bool\" value=\"true\"/>\n"
                 "      <property name=\"icon-size\" type=\"int\" value=\"24\"/>\n"
                 "    </property>\n" +
                 xfceSpring("plugin-3") + "  </property>\n</channel>\n"}};
    };
    return host;
}

TrayHost matePanel() {
    TrayHost host;
    host.name = host.package = "mate-panel";
    host.takesStatusNotifiers = true;
    host.growsRightwards = true;
    host.arguments = {"mate-panel"};
    host.files = [](const HostPlace& place) {
        constexpr int roomForFour = 128;
        return Files{{".config/glib-2.0/settings/keyfile",
                      "[org/mate/panel/general]\ntoplevel-id-list=['bar']\n"
                      "object-id-list=['tray']\n\n"
                      "[org/mate/panel/toplevels/bar]\nexpand=true\norientation='top'\n"
                      "screen=0\ny-bottom=-1\nsize=" +
                          number(place.barHeight) +
                          "\n\n[org/mate/panel/objects/tray]\nobject-type='applet'\n"
                          "applet-iid='NotificationAreaAppletFactory::NotificationArea'\n"
                          "toplevel-id='bar'\npanel-right-stick=false\nlocked=true\nposition=" +
                          number(place.trayRight - roomForFour) + "\n"}};
    };
    return host;
}

} // namespace

std::string withHome(std::string text, const std::string& home) {
    for (std::size_t at = 0; (at = text.find("$HOME", at)) != std::string::npos;) {
        text.replace(at, 5, home);
        at += home.size();
    }
    return text;
}

ChildProcess TrayHost::start(const HostPlace& place, const Environment& environment,
                             const std::string& logFile) const {
    const std::string& home = environment.at("HOME");
    for (const auto& [path, text] : files ? files(place) : Files{}) {
        writeFile(home + "/" + path, text);
    }
    ChildProcess::Options child;
    for (const std::string& argument : arguments) {
        child.arguments.push_back(withHome(argument, home));
    }
    for (const std::string& argument :
         placeArguments ? placeArguments(place) : std::vector<std::string>{}) {
        child.arguments.push_back(argument);
    }
    child.environment = environment;
    child.logFile = logFile;
    child.workingDirectory = home;
    return ChildProcess(std::move(child));
}

const std::vector<TrayHost>& trayHosts() {
    static const std::vector<TrayHost> hosts{trayer(), tint2(), lxpanel(), xfcePanel(),
                                             matePanel()};
    return hosts;
}

const TrayHost& trayHost(const std::string& name) {
    const std::vector<TrayHost>& hosts = trayHosts();
    const auto found = std::find_if(hosts.begin(), hosts.end(),
                                    [&](const TrayHost& host) { return host.name == name; });
    if (found == hosts.end()) {
        throw std::out_of_range("no tray host is called " + name);
    }
    return *found;
}

} // namespace orrivane::e2e
