#pragma once
// A word-wrapped label of plain text that lays its text out once and then only breaks it into
// lines for each width a layout asks about. A plain word-wrapped label lays the whole text out
// anew for every answer, nine times or so per label while a window first takes its size.
#include <QLabel>
#include <QTextLayout>

#include <memory>

namespace quillet::ui {

class WrappingLabel : public QLabel {
  public:
    explicit WrappingLabel(QWidget* parent = nullptr);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    bool Measures() const;
    QTextLayout& Layout() const;
    QSize TextSize(int width) const;
    QSize SizeForWidth(int width) const;

    mutable QString text_;
    mutable std::unique_ptr<QTextLayout> layout_;
    mutable QSize hint_, minimumHint_;
};

}  // namespace quillet::ui
