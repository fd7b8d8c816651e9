#pragma once
// The manual inside the program, opened at one of its sections: it stands in for a web entry
// whose address is not known.
#include <QDialog>

class QTextBrowser;

namespace quillet::ui {

class ManualWindow : public QDialog {
    Q_OBJECT
public:
    explicit ManualWindow(QWidget* parent = nullptr);
    // Scrolls to the heading whose text is `heading`; false when there is none.
    bool ShowSection(const QString& heading);
    QString currentHeading() const;

private:
    QTextBrowser* browser_;
};

// The text of a Markdown resource (":/docs/manual.md", ":/docs/tips.md").
QString ResourceText(const QString& path);

}  // namespace quillet::ui
