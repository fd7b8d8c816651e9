#include "ui/plot_file.h"

#include <QFile>
#include <QRegularExpression>

#include "env/codepage.h"

namespace quillet::ui {

namespace {

// "x: Time (s)   y: Volts" -> the texts after each key; keys are separated by two or more blanks.
QString Field(const QString& header, const QString& key) {
    const QRegularExpression re("(?:^|\\s{2,})" + QRegularExpression::escape(key) + ":\\s*(.*?)(?=\\s{2,}\\S+:|$)");
    const auto m = re.match(header);
    return m.hasMatch() ? m.captured(1).trimmed() : QString();
}

struct Columns {
    int x = 0, y = 1, fit = 2, residual = 3;
    int count() const { return std::max({x, y, fit, residual}) + 1; }
};

void ReadHeader(const QString& header, PlotData& out, Columns& cols) {
    if (header.startsWith("title:")) out.title = header.mid(6).trimmed();
    else if (header.startsWith("model:")) out.model = header.mid(6).trimmed();
    else if (header.startsWith("x:")) {
        out.xLabel = Field(header, "x");
        out.yLabel = Field(header, "y");
    } else if (header.startsWith("rss:")) {
        out.rss = Field(header, "rss");
        out.stddev = Field(header, "stddev");
    } else if (header.startsWith("verdict:")) {
        out.verdict = header.mid(8).trimmed();
    } else if (header.startsWith("columns:")) {
        const QStringList names = header.mid(8).split(QRegularExpression("\\s+"), Qt::SkipEmptyParts);
        auto at = [&names](const char* name, int fallback) {
            const auto i = names.indexOf(name);
            return i < 0 ? fallback : static_cast<int>(i);
        };
        cols = {at("x", 0), at("y", 1), at("fit", 2), at("residual", 3)};
    }
}

}  // namespace

bool ReadPlotFile(const QString& path, PlotData& out, QString& error) {
    out = PlotData{};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = "Cannot read the plot file " + path + ": " + file.errorString();
        return false;
    }
    Columns cols;
    int lineNo = 0;
    while (!file.atEnd()) {
        ++lineNo;
        const QString line = QString::fromStdString(DecodeLine(file.readLine().toStdString())).trimmed();
        if (line.isEmpty()) continue;
        if (line.startsWith('#')) {
            ReadHeader(line.mid(1).trimmed(), out, cols);
            continue;
        }
        const QStringList f = line.split(QRegularExpression("[\\t ]+"), Qt::SkipEmptyParts);
        QList<double> v;
        bool ok = f.size() >= cols.count();
        for (qsizetype i = 0; ok && i < f.size(); ++i) v << f[i].toDouble(&ok);
        if (!ok) {
            error = QString("The plot file %1 has a line that is not %2 numbers: line %3.")
                        .arg(path).arg(cols.count()).arg(lineNo);
            return false;
        }
        const double x = v[cols.x];
        out.data << QPointF(x, v[cols.y]);
        out.fit << QPointF(x, v[cols.fit]);
        out.residuals << QPointF(x, v[cols.residual]);
    }
    if (out.data.isEmpty()) {
        error = "The plot file " + path + " holds no points.";
        return false;
    }
    return true;
}

}  // namespace quillet::ui
