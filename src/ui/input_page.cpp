// The "Input Parameters" tab: the questions in one column of answers, and the run controls.
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>

#include "fitting/new_from_data.h"
#include "fitting/suggest_form.h"
#include "model/form_events.h"
#include "model/question_form.h"
#include "run/submit.h"
#include "ui/data_view.h"
#include "ui/main_window.h"
#include "ui/wrapping_label.h"

namespace quillet::ui {

namespace {

QLabel* WrappedLabel(QWidget* parent) {
    auto* l = new WrappingLabel(parent);
    l->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    return l;
}

QLineEdit* AnswerEdit(QWidget* parent) {
    auto* e = new QLineEdit(parent);
    e->setMinimumWidth(180);
    return e;
}

}  // namespace

QWidget* frmMain::BuildInputPage() {
    FormBinder& b = binder_;
    FormModel& f = state().form;
    auto* page = new QWidget;
    auto* questions = new QWidget;
    auto* grid = new QGridLayout;
    grid->setColumnStretch(0, 3);
    grid->setColumnStretch(1, 2);
    int row = 0;
    auto addQuestion = [&](Label& caption, const QString& name, QWidget* answer) {
        auto* label = WrappedLabel(questions);
        b.BindLabel(label, caption, name);
        label->setBuddy(answer);
        grid->addWidget(label, row, 0);
        grid->addWidget(answer, row++, 1);
    };

    // Question 1: the data file, with its browse button level with the box.
    auto* fileRow = new QWidget(questions);
    auto* fileLayout = new QHBoxLayout(fileRow);
    fileLayout->setContentsMargins(0, 0, 0, 0);
    auto* timeData = AnswerEdit(fileRow);
    auto* browse = new QPushButton(fileRow);
    browse->setToolTip("Choose the data file; it must lie beside the response file");
    browse->setMaximumWidth(browse->fontMetrics().horizontalAdvance("...") * 4);
    fileLayout->addWidget(timeData, 1);
    fileLayout->addWidget(browse);
    auto* fromData = new QPushButton(fileRow);
    fileLayout->addWidget(fromData);
    b.BindText(timeData, f.timeData);
    b.BindButton(fromData, f.cmdNewFromData, [](AppState& s) { fitting::NewFromDataFile(s); });
    b.BindButton(browse, f.cmdFileData, [](AppState& s) { cmdFileData_Click(s); });
    addQuestion(f.Question[1], "Question1", fileRow);

    auto* methods = new QComboBox(questions);
    b.BindCombo(methods, f.Methods, [this](int i) { binder_.Call([i](AppState& s) { Methods_Click(s, i); }); });
    addQuestion(f.Question[2], "Question2", methods);

    for (int q = 3; q <= 8; ++q) {
        TextBox* box = AnswerBox(f, q);
        auto* edit = AnswerEdit(questions);
        b.BindText(edit, *box);
        addQuestion(f.Question[static_cast<std::size_t>(q)], QString("Question%1").arg(q), edit);
    }
    auto* banner = WrappedLabel(questions);
    banner->setAlignment(Qt::AlignCenter);
    banner->setStyleSheet("font-weight: bold; padding: 6px 0;");
    b.BindLabel(banner, f.lblNote, "lblNote");
    grid->addWidget(banner, row++, 0, 1, 2);
    auto* suggest = new QPushButton(questions);
    b.BindButton(suggest, f.cmdSuggest, [](AppState& s) { fitting::cmdSuggest_Click(s); });
    grid->addWidget(suggest, row++, 1, Qt::AlignLeft);

    Label* series[] = {&f.Question9, &f.Question10, &f.Question11, &f.Question12};
    for (int q = 9; q <= 12; ++q) {
        auto* edit = AnswerEdit(questions);
        b.BindText(edit, *AnswerBox(f, q));
        if (q != 10) {
            addQuestion(*series[q - 9], QString("Question%1").arg(q), edit);
            continue;
        }
        // Question 10 of the sine models: the bare caption with the advice list beside it.
        auto* captionRow = new QWidget(questions);
        auto* captionLayout = new QHBoxLayout(captionRow);
        captionLayout->setContentsMargins(0, 0, 0, 0);
        auto* label = WrappedLabel(captionRow);
        b.BindLabel(label, f.Question10, "Question10");
        auto* combo10 = new QComboBox(captionRow);
        combo10->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo10->setMinimumContentsLength(20);
        b.BindCombo(combo10, f.Combo10, [this](int i) {
            binder_.Call([i](AppState& s) {
                s.form.Combo10.listIndex = i;
                s.form.Combo10.text = s.form.Combo10.items.at(static_cast<std::size_t>(i));
            });
        });
        captionLayout->addWidget(label);
        captionLayout->addWidget(combo10, 1);
        label->setBuddy(edit);
        grid->addWidget(captionRow, row, 0);
        grid->addWidget(edit, row++, 1);
    }

    auto* weight = new QCheckBox(questions);
    b.BindCheck(weight, f.chkWeight);
    grid->addWidget(weight, row++, 0, 1, 2);
    auto* note1 = AnswerEdit(questions);
    auto* note2 = AnswerEdit(questions);
    b.BindText(note1, f.Note1);
    b.BindText(note2, f.Note2);
    addQuestion(f.lblKeepNotes, "lblKeepNotes", note1);
    grid->addWidget(note2, row++, 1);

    auto* questionsLayout = new QVBoxLayout(questions);
    questionsLayout->addLayout(grid);
    questionsLayout->addStretch();
    auto* scroll = new QScrollArea(page);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidget(questions);
    scroll->viewport()->setAutoFillBackground(false);
    questions->setAutoFillBackground(false);

    // What a person sets and checks just before a run.
    auto* run = new QGroupBox("Run", page);
    auto* runGrid = new QGridLayout(run);
    auto* pause = new QLineEdit(run);
    pause->setMaximumWidth(80);
    b.BindText(pause, f.tPause);
    auto* pauseLabel = new QLabel("&Pause (seconds):", run);
    pauseLabel->setBuddy(pause);
    auto* warning = new WrappingLabel(run);
    warning->setText(
        "WARNING! 'Pause' time for your PC; e.g. 2010 PC=6 (seconds). If a problem does NOT execute, "
        "increase time; begin time=20.");
    auto* autoExit = new QCheckBox(run);
    b.BindCheck(autoExit, f.AutoExit);
    auto* submit = new QPushButton(run);
    submit->setDefault(false);
    b.BindButton(submit, f.cmdSubmit, [](AppState& s) { cmdSubmit_Click(s); });
    auto* plots = new QPushButton(run);
    b.BindButton(plots, f.cmdPlots, [this](AppState&) { OpenLastPlots(); });
    runGrid->addWidget(pauseLabel, 0, 0);
    runGrid->addWidget(pause, 0, 1);
    runGrid->addWidget(warning, 0, 2, 1, 3);
    runGrid->addWidget(autoExit, 1, 0, 1, 2);
    runGrid->addWidget(submit, 1, 3);
    runGrid->addWidget(plots, 1, 4);
    runGrid->setColumnStretch(2, 1);

    // The data view beside the questions; dragging the handle to the edge hides it.
    dataView_ = new DataView(state(), page);
    auto* split = new QSplitter(Qt::Horizontal, page);
    split->setObjectName("inputSplitter");
    split->addWidget(scroll);
    split->addWidget(dataView_);
    split->setStretchFactor(0, 2);
    split->setStretchFactor(1, 1);
    split->setCollapsible(0, false);
    split->setSizes({700, 360});

    auto* layout = new QVBoxLayout(page);
    layout->addWidget(split, 1);
    layout->addWidget(run);
    return page;
}

}  // namespace quillet::ui
