#include "ui/wrapping_label.h"

#include <QEvent>
#include <QTextOption>
#include <algorithm>
#include <cmath>

namespace quillet::ui {

WrappingLabel::WrappingLabel(QWidget* parent) : QLabel(parent) {
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
}

// Plain text, not empty, not selectable, without tabs, shortcut marks, indent or margin: what
// QLabel measures with the font metrics alone. Anything else is left to QLabel.
bool WrappingLabel::Measures() const {
    const QString& shown = text();
    constexpr auto kSelectable = Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard | Qt::TextEditable;
    return !shown.isEmpty() && wordWrap() && textFormat() == Qt::PlainText && indent() < 0 && margin() == 0 &&
           frameWidth() == 0 && !(textInteractionFlags() & kSelectable) && !shown.contains(u'&') &&
           !shown.contains(u'\t');
}

QTextLayout& WrappingLabel::Layout() const {
    if (!layout_ || text_ != text()) {
        text_ = text();
        QString shown = text_;
        shown.replace(u'\n', QChar::LineSeparator);
        layout_ = std::make_unique<QTextLayout>(shown, font());
        QTextOption option;
        option.setWrapMode(QTextOption::WordWrap);
        layout_->setTextOption(option);
        layout_->setCacheEnabled(true);
        hint_ = minimumHint_ = QSize();
    }
    return *layout_;
}

// The text's bounding size broken into lines at most `width` wide, as the font metrics measure
// it: the widest line, and the lines' heights with the leading between them, each line starting
// on a whole pixel. The text was shaped once; this only breaks it into lines.
QSize WrappingLabel::TextSize(int width) const {
    QTextLayout& layout = Layout();
    const qreal leading = fontMetrics().leading();
    qreal height = -leading;
    qreal widest = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(0, width));
        height = std::ceil(height + leading);
        line.setPosition(QPointF(0, height));
        height += line.ascent() + line.descent();
        widest = std::max(widest, line.naturalTextWidth());
    }
    layout.endLayout();
    return QRectF(0, 0, widest, height).toAlignedRect().size();
}

// The label's size at a width (below 0: the width it would choose), as QLabel works it out.
QSize WrappingLabel::SizeForWidth(int width) const {
    if (minimumWidth() > 0) width = std::max(width, minimumWidth());
    const QMargins margins = contentsMargins();
    const int extra = margins.left() + margins.right();
    const bool choose = width < 0;
    if (choose) width = std::min(fontMetrics().averageCharWidth() * 80, maximumSize().width());
    width -= extra;
    QSize text = TextSize(width);
    // Narrower when the text is short: half the width, then a quarter.
    const int line = fontMetrics().lineSpacing();
    if (choose && text.height() < 4 * line && text.width() > width / 2) text = TextSize(width / 2);
    if (choose && text.height() < 2 * line && text.width() > width / 4) text = TextSize(width / 4);
    return (text + QSize(extra, margins.top() + margins.bottom())).expandedTo(minimumSize());
}

QSize WrappingLabel::sizeHint() const {
    if (!Measures()) return QLabel::sizeHint();
    Layout();  // a new text drops the hints
    if (!hint_.isValid()) hint_ = SizeForWidth(-1);
    return hint_;
}

QSize WrappingLabel::minimumSizeHint() const {
    if (!Measures()) return QLabel::minimumSizeHint();
    Layout();  // a new text drops the hints
    if (!minimumHint_.isValid()) {
        // As narrow as the longest word, as low as one line (or the chosen size, if lower).
        const int oneLine = SizeForWidth(QWIDGETSIZE_MAX).height();
        minimumHint_ = QSize(SizeForWidth(0).width(), std::min(oneLine, sizeHint().height()));
    }
    return minimumHint_;
}

int WrappingLabel::heightForWidth(int width) const {
    if (!Measures()) return QLabel::heightForWidth(width);
    return SizeForWidth(width).height();
}

void WrappingLabel::changeEvent(QEvent* event) {
    // Font and style decide the layout as much as the text does.
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange ||
        event->type() == QEvent::ContentsRectChange)
        layout_.reset();
    QLabel::changeEvent(event);
}

}  // namespace quillet::ui
