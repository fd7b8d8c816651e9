// Renders the program's SVG icon at the sizes of icon_sizes.h into one file of raw pixels, so
// that the program shows its icon at start without the SVG renderer and its plugins.
//   quillet_icon_pixels ICON.svg OUT.argb
#include <QImage>
#include <QPainter>
#include <QSaveFile>
#include <QSvgRenderer>
#include <cstdio>

#include "ui/icon_sizes.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s ICON.svg OUT.argb\n", argv[0]);
        return 2;
    }
    QSvgRenderer svg(QString::fromLocal8Bit(argv[1]));
    if (!svg.isValid()) {
        std::fprintf(stderr, "%s: not an SVG image\n", argv[1]);
        return 1;
    }
    QSaveFile out(QString::fromLocal8Bit(argv[2]));
    if (!out.open(QIODevice::WriteOnly)) {
        std::fprintf(stderr, "%s: %s\n", argv[2], qPrintable(out.errorString()));
        return 1;
    }
    for (int size : quillet::ui::kIconSizes) {
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        svg.render(&painter);
        painter.end();
        out.write(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
    }
    return out.commit() ? 0 : 1;
}
