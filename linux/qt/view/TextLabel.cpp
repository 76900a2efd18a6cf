#include <linux/qt/view/TextLabel.h>

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace orrivane {

TextLabel::TextLabel() {
    setTextFormat(Qt::PlainText);
    setWraps(true);
}

void TextLabel::setWraps(bool wraps) {
    if (wordWrap() == wraps && sizePolicy().horizontalPolicy() == QSizePolicy::Preferred)
        return;
    setWordWrap(wraps);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(wraps);
    setSizePolicy(policy);
}

QSize TextLabel::sizeHint() const {
    if (text().isEmpty())
        return {0, 0};
    const QFontMetricsF metrics(font());
    double longest = 0;
    const auto lines = text().split(u'\n');
    constexpr QRectF plentyOfRoom(0, 0, 1e5, 1e5);
    for (const auto& line : lines)
        // The second one counts what the last letter reaches beyond its own width.
        longest = std::max({longest, metrics.horizontalAdvance(line),
                            metrics.boundingRect(plentyOfRoom, Qt::AlignLeft, line).width()});
    QSize size(static_cast<int>(std::ceil(longest)),
               static_cast<int>(std::ceil(metrics.lineSpacing() * double(lines.size()))));
    // The toolkit breaks a line that fits to the last pixel or two.
    constexpr int most = 8;
    for (int i = 0; wordWrap() && i < most && heightForWidth(size.width()) > size.height(); ++i)
        size.rwidth() += 1;
    return size;
}

QSize TextLabel::minimumSizeHint() const {
    const auto whole = sizeHint();
    if (!wordWrap())
        return whole;
    constexpr int fewWords = 120;
    return {std::min(whole.width(), fewWords), whole.height()};
}

} // namespace orrivane
