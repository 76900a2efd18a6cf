#include <linux/x11/CutoutFile.h>

#include <Orrivane/CommandLine.h>

#include <linux/support/AtomicFile.h>
#include <linux/support/SmallFile.h>
#include <linux/support/Text.h>
#include <linux/support/UserFolders.h>

#include <locale>
#include <sstream>

namespace orrivane::x11 {

CutoutFile CutoutFile::ofUser() {
    return CutoutFile(UserFolders::file(UserFolders::ofThisUser().configuration, "orrivane/notch"));
}

std::optional<Rect> CutoutFile::read() const {
    const auto contents = readSmallFile(path_);
    if (!contents)
        return std::nullopt;
    std::string_view text = *contents;
    const auto parsed = CommandLine::parseNotch(takeLine(text));
    const auto* cutout = std::get_if<Rect>(&parsed);
    return cutout ? std::optional(*cutout) : std::nullopt;
}

std::optional<std::string> CutoutFile::write(const Rect& cutout) const {
    if (path_.empty())
        return "There is no home folder to store the notch in; set HOME and try again.";
    std::ostringstream line;
    line.imbue(std::locale::classic());
    line.precision(12);
    line << cutout.minX() << ',' << cutout.minY() << ',' << cutout.width() << ',' << cutout.height()
         << '\n';
    if (const auto written = replaceFile(path_, line.str()); !written)
        return "The notch could not be stored in " + path_ + " (" + written.text() +
               "); make sure that you may write there and that the disk is not full.";
    return std::nullopt;
}

} // namespace orrivane::x11
