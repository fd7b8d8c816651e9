#pragma once
// Mirrors the library's form model in Qt widgets, both ways. A widget edit calls the library;
// after every library call the whole model is read back into the widgets with their signals
// blocked, so that nothing the library did is reported back to it as an edit.
#include <QObject>
#include <functional>
#include <map>
#include <vector>

#include "model/app_state.h"

class QAbstractButton;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QWidget;

namespace quillet::ui {

class FormBinder : public QObject {
    Q_OBJECT
public:
    explicit FormBinder(AppState& s, QObject* parent = nullptr);

    AppState& state() { return s_; }
    // Runs a library routine and reads the whole model back into the widgets.
    void Call(const std::function<void(AppState&)>& routine);
    void Refresh();
    // Runs `build`, which binds widgets made after the start (a tab page built when it first
    // shows), and mirrors the model into those widgets alone.
    QWidget* BuildBound(const std::function<QWidget*()>& build);

    void BindText(QLineEdit* edit, TextBox& box);
    void BindLabel(QLabel* label, Label& model, const QString& name);
    // `onPick` receives the list position the person chose.
    void BindCombo(QComboBox* combo, ComboBox& model, std::function<void(int)> onPick);
    void BindCheck(QCheckBox* check, CheckBox& model);
    void BindButton(QAbstractButton* button, Button& model, std::function<void(AppState&)> onClick);
    // Any other widget the model shows or hides, enables or disables.
    void BindState(QWidget* widget, const bool& visible, const bool& enabled);
    // Extra mirroring done on every refresh (captions of the window, tab selection, ...).
    void OnRefresh(std::function<void()> refresh) { refreshers_.push_back(std::move(refresh)); }
    // Runs after every library call, once the widgets show the model.
    void AfterCall(std::function<void()> hook) { afterCall_ = std::move(hook); }

    QWidget* WidgetOf(Ctl id) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct BoundEdit {
        QLineEdit* edit;
        TextBox* box;
    };
    void Register(QWidget* w, Ctl id);
    // Mirrors the model with the refreshers from `firstRefresher` on, the widgets from
    // `firstWidget` on quiet meanwhile.
    void RefreshFrom(std::size_t firstWidget, std::size_t firstRefresher);
    // The library moved the focus, or chose what a box selects when it gains the focus.
    void MoveFocus(Ctl id);
    void SelectAsModel(Ctl id);

    AppState& s_;
    std::vector<std::function<void()>> refreshers_;
    std::vector<QWidget*> widgets_;
    std::vector<BoundEdit> edits_;
    std::map<QObject*, Ctl> ids_;
    std::function<void()> afterCall_;
    bool refreshing_ = false;
    int callDepth_ = 0;
};

}  // namespace quillet::ui
