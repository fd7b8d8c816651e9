// What the start shows without reading image files: the icon's pixels, the drawn arrow and the
// drawn group frame.
#include <gtest/gtest.h>

#include <QGridLayout>
#include <QGroupBox>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <QStyleFactory>

#include "ui/app_icon.h"
#include "ui/program_style.h"

namespace quillet::testing {
namespace {

// Largest difference of any channel between two images of one size.
int LargestDifference(const QImage& a, const QImage& b) {
    int largest = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            for (int shift : {0, 8, 16, 24})
                largest = std::max(largest, std::abs(int((p >> shift) & 0xFF) - int((q >> shift) & 0xFF)));
        }
    return largest;
}

TEST(StartLook, TheIconHasItsFourSizesAsTheSvgDrawsThem) {
    const QIcon icon = ui::AppIcon();
    ASSERT_FALSE(icon.isNull()) << "the pixels rendered at build time are missing";
    const QList<QSize> sizes = icon.availableSizes();
    EXPECT_EQ(sizes, (QList<QSize>{{16, 16}, {32, 32}, {48, 48}, {64, 64}}));
    const QIcon svg(":/quillet.svg");
    for (const QSize& size : sizes) {
        const QImage built = icon.pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32);
        const QImage drawn = svg.pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32);
        ASSERT_EQ(built.size(), drawn.size());
        EXPECT_LE(LargestDifference(built, drawn), 2) << size.width();
    }
}

TEST(StartLook, TheOverflowArrowsAreDrawnAndTheOtherIconsAreTheStyles) {
    ui::ProgramStyle style;
    for (auto which : {QStyle::SP_ToolBarHorizontalExtensionButton, QStyle::SP_ToolBarVerticalExtensionButton}) {
        const QImage arrow = style.standardIcon(which).pixmap(16, 16).toImage();
        ASSERT_FALSE(arrow.isNull());
        int inked = 0;
        for (int y = 0; y < arrow.height(); ++y)
            for (int x = 0; x < arrow.width(); ++x) inked += qAlpha(arrow.pixel(x, y)) > 0;
        EXPECT_GT(inked, 10) << which;
        EXPECT_LT(inked, 16 * 16 / 2) << which;
    }
    // Drawn one way, pointing right, then turned: the two are not the same picture.
    EXPECT_NE(style.standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton).pixmap(16, 16).toImage(),
              style.standardIcon(QStyle::SP_ToolBarVerticalExtensionButton).pixmap(16, 16).toImage());
    EXPECT_FALSE(style.standardIcon(QStyle::SP_MessageBoxWarning).isNull());
}

// A titled group box as the window has one, painted in the given style.
QImage GroupBoxIn(QStyle* style, const QString& title) {
    QGroupBox box(title);
    box.setStyle(style);
    auto* grid = new QGridLayout(&box);
    auto* label = new QLabel("Pause (seconds):");
    label->setStyle(style);
    grid->addWidget(label, 0, 0);
    box.resize(240, 90);
    return box.grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

TEST(StartLook, TheDrawnGroupFrameLooksLikeTheStylesPicture) {
    std::unique_ptr<QStyle> fusion(QStyleFactory::create("Fusion"));
    ASSERT_TRUE(fusion);
    ui::ProgramStyle drawn(QStyleFactory::create("Fusion"));
    for (const QString& title : {QString("Run"), QString()}) {
        const QImage picture = GroupBoxIn(fusion.get(), title);
        const QImage code = GroupBoxIn(&drawn, title);
        ASSERT_EQ(picture.size(), code.size());
        // Only the rounding of the corners differs a little; a frame one pixel off differs by
        // the whole contrast of its line.
        EXPECT_LE(LargestDifference(picture, code), 20) << title.toStdString();
    }
}

}  // namespace
}  // namespace quillet::testing
