#pragma once
// The "Calculator" tab: a folder tree and a file list filtered by cboPatterns in place of the
// drive, folder and file lists; the X box, the button and the two result boxes. The lists
// read the disk from the tab's first showing on.
#include <QElapsedTimer>
#include <QWidget>

class QFileSystemModel;
class QListView;
class QTreeView;

namespace quillet::ui {

class FormBinder;

class CalculatorPage : public QWidget {
    Q_OBJECT
public:
    explicit CalculatorPage(FormBinder& binder, QWidget* parent = nullptr);
    QListView* fileList() const { return list_; }
    QTreeView* folderTree() const { return tree_; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    void ScrollToFolder();
    void PickFolder(const QString& path);
    void PickFile(const QString& name);
    void ShowModel();

    FormBinder& binder_;
    QFileSystemModel* folders_ = nullptr;
    QFileSystemModel* files_ = nullptr;
    QTreeView* tree_;
    QElapsedTimer following_;  // since the tree was last told to show a folder
    QListView* list_;
};

// The file pattern of a cboPatterns entry: "Math Models (*.equ)" gives "*.equ"; "*.*" is every file.
QString PatternOf(const QString& entry);

}  // namespace quillet::ui
