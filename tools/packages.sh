# What the scripts install. Sourced, not run.

debian_build="cmake ninja-build g++ pkg-config qt6-base-dev libgtest-dev zlib1g-dev libsodium-dev
    libxcb1-dev libxcb-composite0-dev libxcb-dpms0-dev libxcb-randr0-dev libxcb-record0-dev
    libxcb-res0-dev libxcb-screensaver0-dev libxcb-shape0-dev libxcb-xfixes0-dev libxcb-xinput-dev
    libxcb-xtest0-dev"

# A server, a window manager, trays and tray applications that the end-to-end tests run on.
debian_desktop="openssl xvfb xserver-xephyr openbox psmisc procps dbus dbus-bin x11-utils libglib2.0-bin
    at-spi2-core fonts-dejavu-core adwaita-icon-theme librsvg2-common trayer tint2 lxpanel xfce4-panel xfconf mate-panel
    parcellite xfce4-clipman volumeicon-alsa
    gxkb nm-tray kteatime qjackctl"

# What the test of the Debian packages looks at them with.
debian_packaging="appstream desktop-file-utils dpkg-dev fakeroot file lintian man-db"

homebrew_build="cmake ninja googletest"

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# Installs those of the named Debian packages that are missing.
install_debian() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f '${db:Status-Abbrev}' "$package" 2>/dev/null | grep -q '^ii' ||
            missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    if ! command -v apt-get >/dev/null; then
        echo "$0: these packages are missing and there is no apt-get to install them: ${missing[*]}" >&2
        return 1
    fi
    echo "Installing ${#missing[@]} packages: ${missing[*]}"
    local log
    log=$(mktemp)
    if as_root apt-get -qq update >"$log" 2>&1 &&
        as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq install -y --no-install-recommends \
            "${missing[@]}" >>"$log" 2>&1; then
        rm -f "$log"
        return 0
    fi
    tail -n 5 "$log" >&2
    echo "$0: the packages could not be installed; install them by hand: ${missing[*]}" >&2
    return 1
}

install_homebrew() {
    if ! command -v brew >/dev/null; then
        echo "$0: Homebrew is missing; install it, then run this again." >&2
        return 1
    fi
    local package
    for package in "$@"; do
        brew list --formula "$package" >/dev/null 2>&1 || brew install --quiet "$package" || return 1
    done
}
