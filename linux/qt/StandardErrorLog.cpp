#include <linux/qt/StandardErrorLog.h>

#include <QChar>
#include <QList>
#include <QString>

#include <poll.h>

#include <cerrno>
#include <climits>
#include <cstdio>

namespace orrivane {

namespace {

bool isHarmless(char32_t character) {
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format: // turns the direction of writing
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

std::string spelt(char32_t character) {
    if (isHarmless(character))
        return QString::fromUcs4(&character, 1).toStdString();
    char escape[16];
    std::snprintf(escape, sizeof escape, "\\u{%x}", static_cast<unsigned>(character));
    return escape;
}

bool canTakeALine(int descriptor) {
    pollfd state{descriptor, POLLOUT, 0};
    // A pipe without a reader would end the process by a signal.
    return ::poll(&state, 1, 0) == 1 && (state.revents & POLLOUT) != 0 &&
           (state.revents & (POLLERR | POLLHUP | POLLNVAL)) == 0;
}

} // namespace

std::string StandardErrorLog::formatted(std::string_view line) {
    std::string text;
    const auto decoded =
        QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size())).toUcs4();
    for (const auto character : decoded) {
        const auto next = spelt(character);
        if (text.size() + next.size() + 1 > PIPE_BUF)
            break;
        text += next;
    }
    text += '\n';
    return text;
}

void StandardErrorLog::write(std::string_view line) {
    const auto text = formatted(line);
    if (!canTakeALine(descriptor_))
        return;
    while (::write(descriptor_, text.data(), text.size()) < 0 && errno == EINTR) {
    }
}

} // namespace orrivane
