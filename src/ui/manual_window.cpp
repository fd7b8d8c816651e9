#include "ui/manual_window.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QTextBlock>
#include <QScrollBar>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace quillet::ui {

QString ResourceText(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

ManualWindow::ManualWindow(QWidget* parent) : QDialog(parent) {
    setWindowTitle("Quillet Manual");
    setSizeGripEnabled(true);
    browser_ = new QTextBrowser(this);
    browser_->setOpenExternalLinks(true);
    browser_->setMarkdown(ResourceText(":/docs/manual.md"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(browser_, 1);
    layout->addWidget(buttons);
    resize(820, 640);
}

bool ManualWindow::ShowSection(const QString& heading) {
    for (QTextBlock b = browser_->document()->begin(); b.isValid(); b = b.next()) {
        if (b.blockFormat().headingLevel() == 0 || b.text().trimmed() != heading) continue;
        QTextCursor c(b);
        browser_->setTextCursor(c);
        // Put the heading at the top of the view, not just somewhere visible.
        browser_->verticalScrollBar()->setValue(browser_->verticalScrollBar()->maximum());
        browser_->ensureCursorVisible();
        return true;
    }
    return false;
}

QString ManualWindow::currentHeading() const {
    for (QTextBlock b = browser_->textCursor().block(); b.isValid(); b = b.previous())
        if (b.blockFormat().headingLevel() > 0) return b.text().trimmed();
    return {};
}

}  // namespace quillet::ui
