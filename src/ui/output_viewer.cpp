#include "ui/output_viewer.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "env/codepage.h"

namespace quillet::ui {

OutputViewer::OutputViewer(QWidget* parent) : QDialog(parent) {
    setWindowTitle("Quillet - Last Output");
    setSizeGripEnabled(true);
    where_ = new QLabel(this);
    where_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    text_ = new QPlainTextEdit(this);
    text_->setReadOnly(true);
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto* reload = buttons->addButton("&Reload", QDialogButtonBox::ActionRole);
    connect(reload, &QPushButton::clicked, this, [this] { Load(path_); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(where_);
    layout->addWidget(text_, 1);
    layout->addWidget(buttons);
    resize(820, 600);
}

bool OutputViewer::Load(const QString& path) {
    path_ = path;
    where_->setText(path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        text_->setPlainText("There is no output to show yet: " + file.errorString() +
                            "\n\nSubmit a run (or run a demo) first; its report appears here.");
        return false;
    }
    QString all;
    while (!file.atEnd()) {
        QByteArray line = file.readLine();
        while (line.endsWith('\n') || line.endsWith('\r')) line.chop(1);
        all += QString::fromStdString(DecodeLine(line.toStdString())) + '\n';
    }
    text_->setPlainText(all);
    return true;
}

QString OutputViewer::text() const { return text_->toPlainText(); }

}  // namespace quillet::ui
