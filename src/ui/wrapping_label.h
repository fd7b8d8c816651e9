#pragma once
// A word-wrapped label that remembers its height for the widths layouts ask about: a grid of
// them asks each label the same widths again and again while a window is laid out, and every
// answer lays the text out anew.
#include <QLabel>

#include <array>

namespace quillet::ui {

class WrappingLabel : public QLabel {
  public:
    explicit WrappingLabel(QWidget* parent = nullptr);
    int heightForWidth(int width) const override;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    struct Known {
        int width = -1;
        int height = 0;
    };
    mutable QString text_;
    mutable std::array<Known, 4> known_{};
    mutable std::size_t next_ = 0;
};

}  // namespace quillet::ui
