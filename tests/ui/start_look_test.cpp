// The window's icon, shown at start from pixels rendered at build time.
#include <gtest/gtest.h>

#include <QIcon>
#include <QImage>
#include <QPixmap>

#include "ui/app_icon.h"

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

}  // namespace
}  // namespace quillet::testing
