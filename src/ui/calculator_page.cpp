#include "ui/calculator_page.h"

#include <QTimer>

#include <QComboBox>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

#include "model/calculator.h"
#include "ui/form_binder.h"

namespace quillet::ui {

namespace {

// How long the tree keeps a folder it was told to show in view while it reads in the background.
constexpr qint64 kFollowMs = 1500;

}  // namespace

QString PatternOf(const QString& entry) {
    const auto open = entry.lastIndexOf('(');
    const auto close = entry.lastIndexOf(')');
    const QString p = open >= 0 && close > open ? entry.mid(open + 1, close - open - 1).trimmed() : entry;
    return p == "*.*" || p.isEmpty() ? "*" : p;
}

CalculatorPage::CalculatorPage(FormBinder& binder, QWidget* parent) : QWidget(parent), binder_(binder) {
    FormModel& f = binder.state().form;
    tree_ = new QTreeView(this);
    tree_->setObjectName("dirSelDir");
    tree_->header()->hide();
    list_ = new QListView(this);
    list_->setObjectName("fileSelFile");

    auto* patterns = new QComboBox(this);
    binder.BindCombo(patterns, f.cboPatterns, [this](int i) {
        binder_.Call([i](AppState& s) {
            s.form.cboPatterns.listIndex = i;
            s.form.cboPatterns.text = s.form.cboPatterns.items.at(static_cast<std::size_t>(i));
        });
    });
    auto* browse = new QWidget(this);
    auto* browseLayout = new QVBoxLayout(browse);
    browseLayout->setContentsMargins(0, 0, 0, 0);
    auto* lists = new QSplitter(Qt::Vertical, browse);
    lists->addWidget(tree_);
    lists->addWidget(list_);
    browseLayout->addWidget(lists, 1);
    browseLayout->addWidget(patterns);

    auto* instructions = new QLabel(this);
    instructions->setObjectName("lblInstructions");
    instructions->setWordWrap(true);
    instructions->setTextFormat(Qt::PlainText);
    auto* x = new QLineEdit(this);
    auto* calculate = new QPushButton(this);
    auto* y = new QLineEdit(this);
    auto* deviation = new QLineEdit(this);
    y->setReadOnly(true);
    deviation->setReadOnly(true);
    binder.BindText(x, f.tbXvalue);
    binder.BindText(y, f.tbYanswer);
    binder.BindText(deviation, f.tbDeviation);
    binder.BindButton(calculate, f.cmdCalculate, [](AppState& s) { cmdCalculate_Click(s); });
    calculate->setDefault(true);
    connect(x, &QLineEdit::returnPressed, calculate, &QPushButton::click);

    auto* work = new QWidget(this);
    auto* grid = new QGridLayout(work);
    grid->addWidget(instructions, 0, 0, 1, 2);
    grid->setRowMinimumHeight(1, 12);
    grid->addWidget(new QLabel("X:", work), 2, 0);
    grid->addWidget(x, 2, 1);
    grid->addWidget(calculate, 3, 1, Qt::AlignLeft);
    grid->addWidget(new QLabel("Y:", work), 4, 0);
    grid->addWidget(y, 4, 1);
    grid->addWidget(new QLabel("Std. deviation:", work), 5, 0);
    grid->addWidget(deviation, 5, 1);
    grid->setRowStretch(6, 1);
    grid->setColumnStretch(1, 1);

    auto* split = new QSplitter(Qt::Horizontal, this);
    split->addWidget(browse);
    split->addWidget(work);
    split->setStretchFactor(0, 2);
    split->setStretchFactor(1, 3);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(split);

    binder.OnRefresh([this, instructions] {
        instructions->setText(QString::fromStdString(binder_.state().form.lblInstructions));
        ShowModel();
    });
}

// The folder models read the disk in the background and look at every file for its type and
// icon; a start that does not show this tab has no use for that.
void CalculatorPage::showEvent(QShowEvent* event) {
    if (!files_) {
        folders_ = new QFileSystemModel(this);
        folders_->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Drives);
        folders_->setRootPath("");
        tree_->setModel(folders_);
        for (int c = 1; c < folders_->columnCount(); ++c) tree_->hideColumn(c);
        files_ = new QFileSystemModel(this);
        files_->setFilter(QDir::Files);
        files_->setNameFilterDisables(false);
        list_->setModel(files_);
        // A folder read in the background may now hold the file the model has selected.
        connect(files_, &QFileSystemModel::directoryLoaded, this, [this] { ShowModel(); });
        // The tree reads the way down to the current folder in the background, and sorts each
        // folder it reads: that moves its rows, so the folder is scrolled into view again
        // meanwhile, for a moment only, so as not to take the tree from a person browsing it.
        auto follow = [this] {
            if (following_.isValid() && following_.elapsed() < kFollowMs)
                QTimer::singleShot(0, this, [this] { ScrollToFolder(); });
        };
        connect(folders_, &QAbstractItemModel::rowsInserted, this, follow);
        connect(folders_, &QAbstractItemModel::layoutChanged, this, follow);
        connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this,
                [this](const QModelIndex& i) { PickFolder(folders_->filePath(i)); });
        connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
                [this](const QModelIndex& i) { PickFile(files_->fileName(i)); });
        ShowModel();
    }
    QWidget::showEvent(event);
}

// The first scroll opens the folders above, whose rows the tree lays out only later; the
// second finds the folder's row among them.
void CalculatorPage::ScrollToFolder() {
    const QModelIndex folder = folders_->index(files_->rootPath());
    tree_->scrollTo(folder);
    tree_->doItemsLayout();
    tree_->scrollTo(folder);
}

void CalculatorPage::PickFolder(const QString& path) {
    binder_.Call([p = path.toStdString()](AppState& s) {
        if (s.form.calcFolder == p) return;
        s.form.calcFolder = p;
        s.form.calcSelectedFile.clear();
    });
}

void CalculatorPage::PickFile(const QString& name) {
    binder_.Call([this, n = name.toStdString()](AppState& s) {
        s.form.calcFolder = files_->rootPath().toStdString();
        s.form.calcSelectedFile = n;
    });
}

// The lists show the folder, the pattern and the file the form model holds.
void CalculatorPage::ShowModel() {
    if (!files_) return;  // shown when the tab first shows
    const QSignalBlocker quietTree(tree_->selectionModel());
    const QSignalBlocker quietList(list_->selectionModel());
    const FormModel& f = binder_.state().form;
    const QString pattern = PatternOf(QString::fromStdString(f.cboPatterns.text));
    if (files_->nameFilters() != QStringList{pattern, pattern.toUpper()})
        files_->setNameFilters({pattern, pattern.toUpper()});
    const QString folder = QString::fromStdString(f.calcFolder);
    if (!folder.isEmpty() && files_->rootPath() != folder) {
        const QModelIndex dir = folders_->index(folder);
        tree_->setCurrentIndex(dir);
        tree_->scrollTo(dir);
        following_.start();
        list_->setRootIndex(files_->setRootPath(folder));
    }
    const QString file = QString::fromStdString(f.calcSelectedFile);
    if (file != files_->fileName(list_->currentIndex()))
        list_->setCurrentIndex(file.isEmpty() ? QModelIndex() : files_->index(folder + "/" + file));
}

}  // namespace quillet::ui
