#include "ui/wrapping_label.h"

#include <QEvent>

namespace quillet::ui {

WrappingLabel::WrappingLabel(QWidget* parent) : QLabel(parent) {
    setWordWrap(true);
}

int WrappingLabel::heightForWidth(int width) const {
    if (text() != text_) {
        text_ = text();
        known_.fill({});
    }
    for (const Known& k : known_)
        if (k.width == width) return k.height;
    const int height = QLabel::heightForWidth(width);
    known_[next_] = {width, height};
    next_ = (next_ + 1) % known_.size();
    return height;
}

void WrappingLabel::changeEvent(QEvent* event) {
    // Font and style decide the layout as much as the text does.
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange ||
        event->type() == QEvent::ContentsRectChange)
        known_.fill({});
    QLabel::changeEvent(event);
}

}  // namespace quillet::ui
