#include "ui/lazy_page.h"

#include <QVBoxLayout>

namespace quillet::ui {

LazyPage::LazyPage(std::function<QWidget*()> build, QWidget* parent)
    : QWidget(parent), build_(std::move(build)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

QWidget* LazyPage::page() {
    if (!page_) {
        page_ = build_();
        layout()->addWidget(page_);
        // Built while the tab shows: its children were shown already, and the layout would
        // show the page only from the next event on, after a frame without it.
        if (isVisible()) page_->show();
    }
    return page_;
}

void LazyPage::showEvent(QShowEvent* event) {
    page();
    QWidget::showEvent(event);
}

}  // namespace quillet::ui
