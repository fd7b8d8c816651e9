#include "ui/series_window.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>
#include <cmath>

#include "fitting/number_text.h"

namespace quillet::ui {

// Values with error bars against their position: drawn by hand, since a chart series has no
// error bars.
class ParameterPlot : public QWidget {
  public:
    explicit ParameterPlot(QWidget* parent) : QWidget(parent) { setMinimumSize(320, 220); }

    void Show(QString name, std::vector<double> x, std::vector<double> y, std::vector<double> e) {
        name_ = std::move(name);
        x_ = std::move(x);
        y_ = std::move(y);
        e_ = std::move(e);
        update();
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.fillRect(rect(), palette().base());
        const QRectF area = QRectF(rect()).adjusted(60, 24, -16, -32);
        double x0 = HUGE_VAL, x1 = -HUGE_VAL, y0 = HUGE_VAL, y1 = -HUGE_VAL;
        for (std::size_t i = 0; i < y_.size(); ++i) {
            if (!std::isfinite(y_[i])) continue;
            const double e = std::isfinite(e_[i]) ? e_[i] : 0;
            x0 = std::min(x0, x_[i]), x1 = std::max(x1, x_[i]);
            y0 = std::min(y0, y_[i] - e), y1 = std::max(y1, y_[i] + e);
        }
        p.setPen(palette().text().color());
        p.drawText(QRectF(rect()).adjusted(8, 4, -8, 0), Qt::AlignTop | Qt::AlignHCenter,
                   name_ + " by position in the series");
        p.drawRect(area);
        if (!(x0 <= x1)) return;
        if (x1 == x0) x0 -= 1, x1 += 1;
        if (y1 == y0) y0 -= 1, y1 += 1;
        // A little room, so no point sits on the frame.
        const double dx = (x1 - x0) * 0.04, dy = (y1 - y0) * 0.06;
        x0 -= dx, x1 += dx, y0 -= dy, y1 += dy;
        auto px = [&](double x) { return area.left() + (x - x0) / (x1 - x0) * area.width(); };
        auto py = [&](double y) { return area.bottom() - (y - y0) / (y1 - y0) * area.height(); };
        p.drawText(QRectF(0, area.top() - 8, 56, 16), Qt::AlignRight,
                   QString::fromStdString(fitting::FormatShort(y1, 4)));
        p.drawText(QRectF(0, area.bottom() - 8, 56, 16), Qt::AlignRight,
                   QString::fromStdString(fitting::FormatShort(y0, 4)));
        p.drawText(QRectF(area.left(), area.bottom() + 4, area.width(), 16), Qt::AlignHCenter,
                   "position in the series");
        p.setRenderHint(QPainter::Antialiasing);
        p.setPen(QPen(palette().highlight().color(), 1.5));
        for (std::size_t i = 0; i < y_.size(); ++i) {
            if (!std::isfinite(y_[i])) continue;
            const QPointF c(px(x_[i]), py(y_[i]));
            if (std::isfinite(e_[i]) && e_[i] > 0) {
                p.drawLine(QPointF(c.x(), py(y_[i] - e_[i])), QPointF(c.x(), py(y_[i] + e_[i])));
                p.drawLine(QPointF(c.x() - 3, py(y_[i] - e_[i])), QPointF(c.x() + 3, py(y_[i] - e_[i])));
                p.drawLine(QPointF(c.x() - 3, py(y_[i] + e_[i])), QPointF(c.x() + 3, py(y_[i] + e_[i])));
            }
            p.drawEllipse(c, 3, 3);
        }
    }

  private:
    QString name_;
    std::vector<double> x_, y_, e_;
};

namespace {

// A cell that sorts by its number, not by its text.
class NumberItem : public QTableWidgetItem {
  public:
    explicit NumberItem(double v)
        : QTableWidgetItem(std::isfinite(v) ? QString::fromStdString(fitting::FormatShort(v, 7)) : QString()), v_(v) {}
    bool operator<(const QTableWidgetItem& other) const override {
        const auto* n = dynamic_cast<const NumberItem*>(&other);
        return n ? (std::isnan(v_) ? false : std::isnan(n->v_) || v_ < n->v_) : QTableWidgetItem::operator<(other);
    }

  private:
    double v_;
};

}  // namespace

SeriesWindow::SeriesWindow(fitting::SeriesTable table, QWidget* parent) : QDialog(parent), table_(std::move(table)) {
    setWindowTitle("Quillet series: " + QString::fromStdString(table_.path));
    grid_ = new QTableWidget(this);
    grid_->setObjectName("seriesTable");
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->verticalHeader()->hide();  // the index column numbers the rows
    parameter_ = new QComboBox(this);
    parameter_->setObjectName("seriesParameter");
    plot_ = new ParameterPlot(this);

    auto* copy = new QPushButton("&Copy as CSV", this);
    connect(copy, &QPushButton::clicked, this,
            [this] { QApplication::clipboard()->setText(QString::fromStdString(fitting::SeriesCsv(table_))); });
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->addButton(copy, QDialogButtonBox::ActionRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* plotPane = new QWidget(this);
    auto* plotLayout = new QVBoxLayout(plotPane);
    auto* chooser = new QHBoxLayout;
    auto* label = new QLabel("&Parameter:", plotPane);
    label->setBuddy(parameter_);
    chooser->addWidget(label);
    chooser->addWidget(parameter_, 1);
    plotLayout->addLayout(chooser);
    plotLayout->addWidget(plot_, 1);
    auto* split = new QSplitter(Qt::Vertical, this);
    split->addWidget(grid_);
    split->addWidget(plotPane);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(split, 1);
    layout->addWidget(buttons);
    resize(900, 640);

    Fill();
    for (const auto& name : table_.parameterNames) parameter_->addItem(QString::fromStdString(name));
    connect(parameter_, &QComboBox::currentIndexChanged, this, &SeriesWindow::ShowParameter);
    ShowParameter(0);
}

void SeriesWindow::Fill() {
    QStringList heads = {"#", "data file", "verdict", "RSS", "R squared"};
    for (const auto& n : table_.parameterNames)
        heads << QString::fromStdString(n) << QString::fromStdString(n + " error");
    grid_->setColumnCount(static_cast<int>(heads.size()));
    grid_->setHorizontalHeaderLabels(heads);
    grid_->setRowCount(static_cast<int>(table_.rows.size()));
    for (int r = 0; r < grid_->rowCount(); ++r) {
        const auto& row = table_.rows[static_cast<std::size_t>(r)];
        int c = 0;
        grid_->setItem(r, c++, new NumberItem(static_cast<double>(row.index)));
        grid_->setItem(r, c++, new QTableWidgetItem(QString::fromStdString(row.dataFile)));
        auto* verdict = new QTableWidgetItem(QString::fromStdString(row.verdict));
        verdict->setToolTip(QString::fromStdString(row.reason));
        grid_->setItem(r, c++, verdict);
        const bool failed = row.verdict == "failed";
        grid_->setItem(r, c++, new NumberItem(failed ? std::nan("") : row.rss));
        grid_->setItem(r, c++, new NumberItem(failed ? std::nan("") : row.rSquared));
        for (std::size_t k = 0; k < row.values.size(); ++k) {
            grid_->setItem(r, c++, new NumberItem(row.values[k]));
            grid_->setItem(r, c++, new NumberItem(row.errors[k]));
        }
    }
    grid_->setSortingEnabled(true);
    grid_->resizeColumnsToContents();
}

void SeriesWindow::ShowParameter(int k) {
    if (k < 0) return;
    std::vector<double> x, y, e;
    for (const auto& row : table_.rows) {
        const auto i = static_cast<std::size_t>(k);
        x.push_back(static_cast<double>(row.index));
        y.push_back(i < row.values.size() ? row.values[i] : std::nan(""));
        e.push_back(i < row.errors.size() ? row.errors[i] : std::nan(""));
    }
    plot_->Show(parameter_->itemText(k), x, y, e);
}

}  // namespace quillet::ui
