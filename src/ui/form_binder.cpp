#include "ui/form_binder.h"

#include <algorithm>
#include <memory>

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTimer>

#include "env/errors.h"
#include "model/form_events.h"
#include "model/question_form.h"

namespace quillet::ui {

namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

// The control's own name, so that a widget is found by the name the form model uses.
const char* CtlName(Ctl id) {
    switch (id) {
        case Ctl::timeData: return "timeData";
        case Ctl::Methods: return "Methods";
        case Ctl::Line0: return "Line0";
        case Ctl::nPoints: return "nPoints";
        case Ctl::nTerms: return "nTerms";
        case Ctl::xnorm: return "xnorm";
        case Ctl::ynorm: return "ynorm";
        case Ctl::Y0: return "Y0";
        case Ctl::Amplitude: return "Amplitude";
        case Ctl::PW50: return "PW50";
        case Ctl::PeakLocations: return "PeakLocations";
        case Ctl::Amplitude2: return "Amplitude2";
        case Ctl::Note1: return "Note1";
        case Ctl::Note2: return "Note2";
        case Ctl::Remax: return "Remax";
        case Ctl::Detail: return "Detail";
        case Ctl::Delta: return "Delta";
        case Ctl::PreDamp: return "PreDamp";
        case Ctl::Damp: return "Damp";
        case Ctl::Rho: return "Rho";
        case Ctl::tPause: return "tPause";
        case Ctl::tbXvalue: return "tbXvalue";
        case Ctl::tbYanswer: return "tbYanswer";
        case Ctl::tbDeviation: return "tbDeviation";
        case Ctl::Combo10: return "Combo10";
        case Ctl::cboPatterns: return "cboPatterns";
        case Ctl::chkWeight: return "chkWeight";
        case Ctl::AutoExit: return "AutoExit";
        case Ctl::cmdFileData: return "cmdFileData";
        case Ctl::cmdNewFromData: return "cmdNewFromData";
        case Ctl::cmdSuggest: return "cmdSuggest";
        case Ctl::cmdPlots: return "cmdPlots";
        case Ctl::cmdSubmit: return "cmdSubmit";
        case Ctl::cmdEditSolverData: return "cmdEditSolverData";
        case Ctl::cmdDefaultSolverData: return "cmdDefaultSolverData";
        case Ctl::cmdCalculate: return "cmdCalculate";
        case Ctl::None: break;
    }
    return "";
}

void SetShown(QWidget* w, bool visible) {
    if (w->isHidden() == visible) w->setHidden(!visible);
}

}  // namespace

FormBinder::FormBinder(AppState& s, QObject* parent) : QObject(parent), s_(s) {}

void FormBinder::Call(const std::function<void(AppState&)>& routine) {
    const Ctl focusBefore = s_.form.focus;
    ++callDepth_;
    try {
        routine(s_);
    } catch (const RuntimeError& e) {
        // Routines trap their own errors; one that escapes must not end the program.
        if (s_.env.dialogs) s_.env.dialogs->MsgBox(UnexpectedErrorText(e), mb::Critical, "Quillet");
    } catch (const std::exception& e) {
        if (s_.env.dialogs) s_.env.dialogs->MsgBox(e.what(), mb::Critical, "Quillet");
    }
    --callDepth_;
    Refresh();
    if (s_.form.focus != focusBefore) MoveFocus(s_.form.focus);
    if (afterCall_) afterCall_();
}

void FormBinder::Refresh() {
    RefreshFrom(0, 0);
}

QWidget* FormBinder::BuildBound(const std::function<QWidget*()>& build) {
    const std::size_t firstWidget = widgets_.size(), firstRefresher = refreshers_.size();
    QWidget* built = build();
    RefreshFrom(firstWidget, firstRefresher);
    return built;
}

void FormBinder::RefreshFrom(std::size_t firstWidget, std::size_t firstRefresher) {
    const bool outer = !refreshing_;
    refreshing_ = true;
    std::vector<std::unique_ptr<QSignalBlocker>> blockers;
    blockers.reserve(widgets_.size() - firstWidget);
    for (std::size_t i = firstWidget; i < widgets_.size(); ++i)
        blockers.push_back(std::make_unique<QSignalBlocker>(widgets_[i]));
    // A refresher may build a page and so bind more widgets: a copy of each runs.
    for (std::size_t i = firstRefresher; i < refreshers_.size(); ++i) {
        const auto refresh = refreshers_[i];
        refresh();
    }
    if (outer) refreshing_ = false;
}

void FormBinder::MoveFocus(Ctl id) {
    if (QWidget* w = WidgetOf(id); w && w->isVisible()) {
        refreshing_ = true;
        w->setFocus(Qt::OtherFocusReason);
        refreshing_ = false;
    }
}

void FormBinder::SelectAsModel(Ctl id) {
    for (const auto& [edit, box] : edits_) {
        if (box->id != id || box->selLength <= 0) continue;
        // Deferred, so that the mouse press that gave the focus does not undo the selection.
        QTimer::singleShot(0, edit, [edit, start = box->selStart, length = box->selLength] {
            edit->setSelection(start, std::min<int>(length, static_cast<int>(edit->text().size()) - start));
        });
    }
}

void FormBinder::Register(QWidget* w, Ctl id) {
    widgets_.push_back(w);
    if (id == Ctl::None) return;
    w->setObjectName(CtlName(id));
    ids_[w] = id;
    w->installEventFilter(this);
}

QWidget* FormBinder::WidgetOf(Ctl id) const {
    for (const auto& [w, wid] : ids_)
        if (wid == id) return static_cast<QWidget*>(w);
    return nullptr;
}

bool FormBinder::eventFilter(QObject* watched, QEvent* event) {
    // Focus coming back after a message box or another window is no new focus of a control.
    if (event->type() == QEvent::FocusIn && !refreshing_ && callDepth_ == 0) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        auto it = ids_.find(watched);
        if (it != ids_.end() && reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
            const Ctl id = it->second;
            s_.form.focus = id;
            Call([id](AppState& s) { OnGotFocus(s, id); });
            SelectAsModel(id);
        }
    }
    return QObject::eventFilter(watched, event);
}

void FormBinder::BindText(QLineEdit* edit, TextBox& box) {
    Register(edit, box.id);
    edits_.push_back({edit, &box});
    connect(edit, &QLineEdit::textEdited, this,
            [this, &box](const QString& text) { Call([&box, t = text.toStdString()](AppState& s) { SetText(s, box, t); }); });
    refreshers_.push_back([edit, &box] {
        if (edit->text() != Q(box.text)) edit->setText(Q(box.text));
        SetShown(edit, box.visible);
        edit->setEnabled(box.enabled);
        edit->setToolTip(Q(box.toolTip));
    });
}

void FormBinder::BindLabel(QLabel* label, Label& model, const QString& name) {
    Register(label, Ctl::None);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    refreshers_.push_back([label, &model] {
        label->setText(Q(model.caption));
        SetShown(label, model.visible);
    });
}

void FormBinder::BindCombo(QComboBox* combo, ComboBox& model, std::function<void(int)> onPick) {
    Register(combo, model.id);
    connect(combo, &QComboBox::activated, this, std::move(onPick));
    refreshers_.push_back([combo, &model] {
        QStringList items;
        for (const auto& i : model.items) items << Q(i);
        QStringList shown;
        for (int i = 0; i < combo->count(); ++i) shown << combo->itemText(i);
        if (shown != items) {
            combo->clear();
            combo->addItems(items);
        }
        combo->setCurrentIndex(model.listIndex);
        // A text that equals no list entry still shows, as the list's placeholder.
        combo->setPlaceholderText(model.listIndex < 0 ? Q(model.text) : QString());
        SetShown(combo, model.visible);
        combo->setEnabled(model.enabled);
    });
}

void FormBinder::BindCheck(QCheckBox* check, CheckBox& model) {
    Register(check, model.id);
    connect(check, &QCheckBox::clicked, this,
            [this, &model](bool on) { Call([&model, on](AppState& s) { SetCheck(s, model, on); }); });
    refreshers_.push_back([check, &model] {
        check->setChecked(model.value);
        if (!model.caption.empty()) check->setText(Q(model.caption));
        SetShown(check, model.visible);
        check->setEnabled(model.enabled);
    });
}

void FormBinder::BindButton(QAbstractButton* button, Button& model, std::function<void(AppState&)> onClick) {
    Register(button, model.id);
    connect(button, &QAbstractButton::clicked, this, [this, onClick = std::move(onClick)] { Call(onClick); });
    refreshers_.push_back([button, &model] {
        button->setText(Q(model.caption));
        button->setToolTip(Q(model.toolTip));
        SetShown(button, model.visible);
        button->setEnabled(model.enabled);
    });
}

void FormBinder::BindState(QWidget* widget, const bool& visible, const bool& enabled) {
    Register(widget, Ctl::None);
    refreshers_.push_back([widget, &visible, &enabled] {
        SetShown(widget, visible);
        widget->setEnabled(enabled);
    });
}

}  // namespace quillet::ui
