#pragma once
// The Demos tab: the example response files of the demos folder, each with a short
// description, and a button that runs the chosen one as a demo.
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
    QTreeWidget* list() const { return list_; }
    // Runs the selected demo through the run launcher.
    void RunSelected();
    bool Select(const QString& fileName);

private:
    FormBinder& binder_;
    QTreeWidget* list_;
    QPushButton* run_;
};

// What a demo's response file asks for, in a line: model, terms, points and its first note.
QString DemoDescription(const std::string& folder, const std::string& fileName);

}  // namespace quillet::ui
