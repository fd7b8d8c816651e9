#include "ui/about_forms.h"

#include <QDialogButtonBox>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "model/catalogue.h"
#include "ui/links.h"

namespace quillet::ui {

namespace {

QLabel* Text(const QString& text, QWidget* parent, bool heading = false) {
    auto* l = new QLabel(text, parent);
    l->setObjectName(heading ? "heading" : "");
    l->setTextFormat(Qt::PlainText);
    l->setWordWrap(true);
    l->setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (heading) {
        QFont f = l->font();
        f.setPointSizeF(f.pointSizeF() * 1.4);
        f.setBold(true);
        l->setFont(f);
    }
    return l;
}

QLabel* Logo(QWidget* parent) {
    auto* l = new QLabel(parent);
    l->setPixmap(QIcon(":/quillet.svg").pixmap(64, 64));
    return l;
}

// Wide enough that the version lines stay on one line each.
void SetReadableWidth(QDialog* d) { d->setMinimumWidth(d->fontMetrics().averageCharWidth() * 64); }

}  // namespace

QString VersionLine() { return QString(kProductName) + " (Version " + kVersion + ")"; }
QString VersionLineDots() { return QString(kProductName) + " ... Version " + kVersion; }

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
    setObjectName("frmAbout");
    SetReadableWidth(this);
    setWindowTitle(QString("About ") + kProductName);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Logo(this), 0, Qt::AlignHCenter);
    for (QLabel* version : {Text(VersionLine(), this, true), Text(VersionLineDots(), this)}) {
        version->setAlignment(Qt::AlignHCenter);
        layout->addWidget(version);
    }
    layout->addWidget(Text("A front-end for curve fitting: answer the questionnaire, submit a batch run, "
                           "read the fitted model, its plots and its report.",
                           this));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addWidget(buttons);
}

frmEmail::frmEmail(ShellOpener& shell, QWidget* parent) : QDialog(parent) {
    setObjectName("frmEmail");
    SetReadableWidth(this);
    setWindowTitle("E-mail Support");
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Text(VersionLine(), this, true));
    layout->addWidget(Text(VersionLineDots(), this));
    layout->addWidget(Text("1. Press the 'E-mail' button below; your mail program opens a new message.", this));
    layout->addWidget(Text("2. Attach your response file (.Fit), its data file and the run's output if they help.", this));
    layout->addWidget(Text(QString("3. Enter a Subject: '") + kProductName + " ... Version " + kVersion +
                               "' and a few words to describe reason for contact",
                           this));
    auto* buttons = new QDialogButtonBox(this);
    auto* email = buttons->addButton("&E-mail", QDialogButtonBox::ActionRole);
    email->setObjectName("cmdEmail");
    buttons->addButton(QDialogButtonBox::Ok);
    connect(email, &QPushButton::clicked, this, [&shell] { mailto(shell, SupportMailto()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addWidget(buttons);
}

}  // namespace quillet::ui
