#pragma once
// A tab page whose widgets are built the first time the tab shows, so that a start builds,
// polishes and lays out only the page a person sees.
#include <QWidget>
#include <functional>

namespace quillet::ui {

class LazyPage : public QWidget {
    Q_OBJECT
public:
    // `build` makes the page's widgets.
    explicit LazyPage(std::function<QWidget*()> build, QWidget* parent = nullptr);
    // The page, built now if it was not yet.
    QWidget* page();

protected:
    void showEvent(QShowEvent* event) override;

private:
    std::function<QWidget*()> build_;
    QWidget* page_ = nullptr;
};

}  // namespace quillet::ui
