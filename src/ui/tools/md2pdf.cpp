// Renders Markdown documents to PDF with Qt's own text layout, so the build needs no TeX.
//   quillet_md2pdf --out FILE.pdf [--base DIR] [--markdown-out FILE.md] INPUT.md...
// Several inputs are joined into one document, in order. Images are taken relative to --base
// and scaled down to the page width.
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPageLayout>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFragment>
#include <QTextImageFormat>
#include <QUrl>
#include <cstdio>

namespace {

struct Options {
    QString out;
    QString base;
    QString markdownOut;
    QStringList inputs;
};

bool ParseArgs(const QStringList& args, Options& o) {
    for (qsizetype i = 1; i < args.size(); ++i) {
        const QString& a = args[i];
        const bool hasValue = i + 1 < args.size();
        if (a == "--out" && hasValue) o.out = args[++i];
        else if (a == "--base" && hasValue) o.base = args[++i];
        else if (a == "--markdown-out" && hasValue) o.markdownOut = args[++i];
        else if (a.startsWith("--")) return false;
        else o.inputs << a;
    }
    return !o.out.isEmpty() && !o.inputs.isEmpty();
}

bool ReadAll(const QString& path, QString& text) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "md2pdf: cannot read %s: %s\n", qPrintable(path), qPrintable(f.errorString()));
        return false;
    }
    text += QString::fromUtf8(f.readAll()) + "\n\n";
    return true;
}

bool WriteAll(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(bytes) != bytes.size()) {
        std::fprintf(stderr, "md2pdf: cannot write %s: %s\n", qPrintable(path), qPrintable(f.errorString()));
        return false;
    }
    return true;
}

// Loads each image into the document (printing works on a copy that would not find them) and
// draws it at most as wide as the text: screenshots are wider than a page.
void PlaceImages(QTextDocument& doc, const QString& base, qreal width) {
    for (QTextBlock b = doc.begin(); b.isValid(); b = b.next()) {
        for (auto it = b.begin(); !it.atEnd(); ++it) {
            const QTextFragment frag = it.fragment();
            QTextImageFormat img = frag.charFormat().toImageFormat();
            if (!img.isValid()) continue;
            const QImage image(QFileInfo(base + "/" + img.name()).absoluteFilePath());
            if (image.isNull()) {
                std::fprintf(stderr, "md2pdf: cannot read the image %s\n", qPrintable(img.name()));
                continue;
            }
            doc.addResource(QTextDocument::ImageResource, QUrl(img.name()), image);
            if (image.width() <= width) continue;
            img.setWidth(width);
            img.setHeight(width * image.height() / image.width());
            QTextCursor c(&doc);
            c.setPosition(frag.position());
            c.setPosition(frag.position() + frag.length(), QTextCursor::KeepAnchor);
            c.setCharFormat(img);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    Options o;
    if (!ParseArgs(app.arguments(), o)) {
        std::fprintf(stderr, "usage: quillet_md2pdf --out FILE.pdf [--base DIR] [--markdown-out FILE.md] INPUT.md...\n");
        return 2;
    }
    QString markdown;
    for (const QString& in : o.inputs)
        if (!ReadAll(in, markdown)) return 1;
    if (!o.markdownOut.isEmpty() && !WriteAll(o.markdownOut, markdown.toUtf8())) return 1;

    QPdfWriter writer(o.out);
    writer.setTitle(QFileInfo(o.out).completeBaseName());
    writer.setCreator("Quillet");
    // QTextDocument::print adds a margin of 2 cm of its own, and the page number below it.
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(0, 4, 0, 4),
                                     QPageLayout::Millimeter));
    QTextDocument doc;
    doc.setDefaultFont(QFont("DejaVu Sans", 10));
    doc.setBaseUrl(QUrl::fromLocalFile(o.base + "/"));
    doc.setMarkdown(markdown);
    // The text's width in the document's pixels (96 per inch): the page less the 2 cm margins.
    const double textWidthInches = (writer.pageLayout().paintRect(QPageLayout::Millimeter).width() - 40) / 25.4;
    PlaceImages(doc, o.base, textWidthInches * 96 * 0.98);
    doc.print(&writer);
    return 0;
}
