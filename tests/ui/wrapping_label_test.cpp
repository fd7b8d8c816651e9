// A question label measures its text as a plain word-wrapped QLabel does, at every width.
#include <gtest/gtest.h>

#include <QLabel>

#include "ui/wrapping_label.h"

namespace quillet::testing {
namespace {

struct Case {
    const char* what;
    QString text;
    QString styleSheet;
    Qt::TextInteractionFlags interaction = Qt::LinksAccessibleByMouse;
};


TEST(WrappingLabel, MeasuresAsAPlainWrappedLabelAtEveryWidth) {
    const Case cases[] = {
        {"question", "1. \u00bb  Filename that contains your XY data to be fitted?", ""},
        {"long question", "2. \u00bb  Model name: Lorentzian, Mod. Lorentzian, Exponential, Power, etc.?", ""},
        {"short", "Run", ""},
        {"empty", "", ""},
        {"one long word", "Supercalifragilisticexpialidocious-and-then-some", ""},
        {"line breaks", "First line\nsecond, longer line of the same label\n\nafter a blank", ""},
        {"runs of spaces", "a  b   c    d     e      f", ""},
        {"bold with padding", "=== Below here, values must be normalized by X or Y-axis Norm value! ===",
         "font-weight: bold; padding: 6px 0;"},
        {"selectable", "Questions 3 and 4 (first line, number of points) need whole numbers from 1 up.", "",
         Qt::TextSelectableByMouse},
    };
    for (const Case& c : cases) {
        QLabel plain;
        plain.setWordWrap(true);
        plain.setTextFormat(Qt::PlainText);
        ui::WrappingLabel wrapping;
        for (QLabel* label : {&plain, static_cast<QLabel*>(&wrapping)}) {
            label->setStyleSheet(c.styleSheet);
            label->setTextInteractionFlags(c.interaction);
            label->setText(c.text);
            label->ensurePolished();
        }
        SCOPED_TRACE(c.what);
        EXPECT_EQ(wrapping.sizeHint(), plain.sizeHint());
        EXPECT_EQ(wrapping.minimumSizeHint(), plain.minimumSizeHint());
        for (int width = 0; width <= 700; width += 3)
            ASSERT_EQ(wrapping.heightForWidth(width), plain.heightForWidth(width)) << "at width " << width;
    }
}

TEST(WrappingLabel, MeasuresAgainWhenTheTextOrFontChanges) {
    ui::WrappingLabel wrapping;
    QLabel plain;
    plain.setWordWrap(true);
    plain.setTextFormat(Qt::PlainText);
    auto same = [&](const char* step) {
        SCOPED_TRACE(step);
        EXPECT_EQ(wrapping.sizeHint(), plain.sizeHint());
        EXPECT_EQ(wrapping.minimumSizeHint(), plain.minimumSizeHint());
        EXPECT_EQ(wrapping.heightForWidth(120), plain.heightForWidth(120));
    };
    for (QLabel* label : {&plain, static_cast<QLabel*>(&wrapping)}) label->setText("Number of terms to use?");
    same("first text");
    for (QLabel* label : {&plain, static_cast<QLabel*>(&wrapping)})
        label->setText("Number of points to use in curve fit, from the first line on?");
    same("longer text");
    QFont big = wrapping.font();
    big.setPointSizeF(big.pointSizeF() * 2);
    for (QLabel* label : {&plain, static_cast<QLabel*>(&wrapping)}) label->setFont(big);
    same("larger font");
    for (QLabel* label : {&plain, static_cast<QLabel*>(&wrapping)}) label->setContentsMargins(4, 2, 9, 3);
    same("margins");
}

}  // namespace
}  // namespace quillet::testing
