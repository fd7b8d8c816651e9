#pragma once
// The output viewer: the report a run leaves ("~Quillet.out"), read-only.
#include <QDialog>

class QLabel;
class QPlainTextEdit;

namespace quillet::ui {

class OutputViewer : public QDialog {
    Q_OBJECT
public:
    explicit OutputViewer(QWidget* parent = nullptr);
    // Shows the file; a missing file shows why instead.
    bool Load(const QString& path);
    QString text() const;

private:
    QString path_;
    QLabel* where_;
    QPlainTextEdit* text_;
};

}  // namespace quillet::ui
