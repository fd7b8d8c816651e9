#pragma once
// The Demos tab: the example response files of the demos folder, each with a short
// description, and a button that runs the chosen one as a demo. The folder is read when the
// tab is first shown (or the list first asked for), not at start: reading every example for
// its description is most of what the tab costs.
#include <QWidget>

class QTreeWidget;
class QPushButton;

namespace quillet::ui {

class FormBinder;

class DemosPage : public QWidget {
    Q_OBJECT
public:
    explicit DemosPage(FormBinder& binder, QWidget* parent = nullptr);
    // Reads the demos folder again.
    void Reload();
    // The list, read from the folder on first use.
    QTreeWidget* list();
    // Runs the selected demo through the run launcher.
    void RunSelected();
    bool Select(const QString& fileName);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void EnsureListed();

    FormBinder& binder_;
    bool listed_ = false;
    QTreeWidget* list_;
    QPushButton* run_;
};

// What a demo's response file asks for, in a line: model, terms, points and its first note.
QString DemoDescription(const std::string& folder, const std::string& fileName);

}  // namespace quillet::ui
