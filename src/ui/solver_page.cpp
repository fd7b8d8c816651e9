// The "Solver Variables" tab and the Tips tab.
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "model/catalogue.h"
#include "solver/solver_tab.h"
#include "ui/main_window.h"
#include "ui/manual_window.h"

namespace quillet::ui {

namespace {

QLabel* Bold(const QString& text, QWidget* parent) {
    auto* l = new QLabel(text, parent);
    l->setStyleSheet("font-weight: bold;");
    return l;
}

}  // namespace

QWidget* frmMain::BuildSolverPage() {
    FormBinder& b = binder_;
    FormModel& f = state().form;
    auto* page = new QWidget;
    auto* title = Bold("Solver variables", page);
    title->setObjectName("lblTitleSolv");
    auto* sentence = new QLabel(
        "For a definition of the following Solver control variables read the 'Manual.pdf' file.", page);
    sentence->setObjectName("lblSentence1");
    sentence->setWordWrap(true);

    auto* grid = new QGridLayout;
    grid->setColumnStretch(0, 3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(2, 1);
    auto* heads = new QHBoxLayout;
    heads->addWidget(Bold("Default Values", page));
    heads->addSpacing(24);
    heads->addWidget(Bold("Control Questions", page), 1);
    grid->addLayout(heads, 0, 0);
    for (int i = 1; i <= 6; ++i) {
        auto* label = new QLabel(page);
        label->setWordWrap(true);
        b.BindLabel(label, f.SolvQuestion[static_cast<std::size_t>(i)], QString("SolvQuestion%1").arg(i));
        auto* edit = new QLineEdit(page);
        edit->setMinimumWidth(120);
        edit->setMaximumWidth(edit->fontMetrics().averageCharWidth() * 30);
        b.BindText(edit, SolverBox(f, i));
        label->setBuddy(edit);
        grid->addWidget(label, i, 0);
        grid->addWidget(edit, i, 1);
    }

    auto* buttons = new QHBoxLayout;
    auto* edit = new QPushButton(page);
    auto* useDefaults = new QPushButton(page);
    b.BindButton(edit, f.cmdEditSolverData, [](AppState& s) { cmdEditSolverData_Click(s); });
    b.BindButton(useDefaults, f.cmdDefaultSolverData, [](AppState& s) { cmdDefaultSolverData_Click(s); });
    buttons->addWidget(new QLabel(kSolverQuestion22, page));
    buttons->addStretch();
    buttons->addWidget(edit);
    buttons->addWidget(useDefaults);

    auto* layout = new QVBoxLayout(page);
    layout->addWidget(title);
    layout->addWidget(sentence);
    layout->addSpacing(8);
    layout->addLayout(grid);
    layout->addSpacing(8);
    layout->addLayout(buttons);
    layout->addStretch();
    return page;
}

QWidget* frmMain::BuildTipsPage() {
    auto* tips = new QTextBrowser;
    tips->setObjectName("tips");
    tips->setOpenExternalLinks(true);
    tips->setMarkdown(ResourceText(":/docs/tips.md"));
    return tips;
}

}  // namespace quillet::ui
