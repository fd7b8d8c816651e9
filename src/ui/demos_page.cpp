#include "ui/demos_page.h"

#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "env/paths.h"
#include "model/catalogue.h"
#include "model/form_events.h"
#include "model/response_file.h"
#include "run/launcher.h"
#include "ui/form_binder.h"

namespace quillet::ui {

QString DemoDescription(const std::string& folder, const std::string& fileName) {
    // Reading a demo for its description is no command of the person's: nothing is shown.
    std::vector<std::string> ignored;
    const ResponseRecord r = ReadResponseRecord(folder, fileName, ignored);
    QString text = QString("%1, %2 terms, %3 points of %4")
                       .arg(QString::fromStdString(r.Answers[2]), QString::fromStdString(r.Answers[5]),
                            QString::fromStdString(r.Answers[4]), QString::fromStdString(r.Answers[1]));
    // The first note says what the example is; the second is left for the person's own notes.
    if (!r.Note1.empty() && r.Note1 != FormDefaults::Note1) text += ". " + QString::fromStdString(r.Note1);
    return text;
}

DemosPage::DemosPage(FormBinder& binder, QWidget* parent) : QWidget(parent), binder_(binder) {
    auto* intro = new QLabel(
        "Each example below is a complete response file with its data. Choose one and press "
        "'Run Demo': the solver fits it as a submitted run would, and 'View Last Plots' then shows "
        "the data, the fitted curve and the residuals.",
        this);
    intro->setWordWrap(true);
    list_ = new QTreeWidget(this);
    list_->setObjectName("demoList");
    list_->setHeaderLabels({"Example", "Description"});
    list_->setRootIsDecorated(false);
    list_->setAlternatingRowColors(true);
    list_->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    list_->header()->setStretchLastSection(true);
    run_ = new QPushButton("&Run Demo", this);
    run_->setObjectName("cmdRunDemo");
    connect(run_, &QPushButton::clicked, this, &DemosPage::RunSelected);
    connect(list_, &QTreeWidget::itemActivated, this, [this] { RunSelected(); });
    connect(list_, &QTreeWidget::itemSelectionChanged, this,
            [this] { run_->setEnabled(!list_->selectedItems().isEmpty()); });

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(run_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addWidget(list_, 1);
    layout->addLayout(buttons);
    run_->setEnabled(false);
}

void DemosPage::showEvent(QShowEvent* event) {
    EnsureListed();
    QWidget::showEvent(event);
}

void DemosPage::EnsureListed() {
    if (!listed_) Reload();
}

QTreeWidget* DemosPage::list() {
    EnsureListed();
    return list_;
}

void DemosPage::Reload() {
    listed_ = true;
    list_->clear();
    const std::string folder = JoinPath(binder_.state().env.programDir, "demos");
    const QStringList names =
        QDir(QString::fromStdString(folder)).entryList({"Ex*.Fit"}, QDir::Files, QDir::Name | QDir::IgnoreCase);
    for (const QString& name : names)
        list_->addTopLevelItem(new QTreeWidgetItem({name, DemoDescription(folder, name.toStdString())}));
    if (list_->topLevelItemCount() > 0) list_->setCurrentItem(list_->topLevelItem(0));
    run_->setEnabled(list_->currentItem() != nullptr);
}

bool DemosPage::Select(const QString& fileName) {
    EnsureListed();
    const auto found = list_->findItems(fileName, Qt::MatchExactly, 0);
    if (found.isEmpty()) return false;
    list_->setCurrentItem(found.front());
    return true;
}

void DemosPage::RunSelected() {
    const QTreeWidgetItem* item = list_->currentItem();
    if (!item) return;
    binder_.Call([name = item->text(0).toStdString()](AppState& s) {
        RunDemo(s, name);
    });
}

}  // namespace quillet::ui
