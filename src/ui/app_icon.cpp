#include "ui/app_icon.h"

#include <QImage>
#include <QPixmap>
#include <QResource>

#include "ui/icon_sizes.h"

namespace quillet::ui {

QIcon AppIcon() {
    const QResource pixels(":/quillet-icon.argb");
    qsizetype expected = 0;
    for (int size : kIconSizes) expected += qsizetype{size} * size * 4;
    const QByteArray bytes = pixels.uncompressedData();
    if (bytes.size() != expected) return {};
    QIcon icon;
    const uchar* at = reinterpret_cast<const uchar*>(bytes.constData());
    for (int size : kIconSizes) {
        // The image only borrows the bytes; the pixmap is a copy of its own.
        const QImage image(at, size, size, size * 4, QImage::Format_ARGB32_Premultiplied);
        icon.addPixmap(QPixmap::fromImage(image));
        at += qsizetype{size} * size * 4;
    }
    return icon;
}

}  // namespace quillet::ui
