#include "ui/plot_viewer.h"

#include <QChart>
#include <QChartView>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineSeries>
#include <QPainter>
#include <QPushButton>
#include <QScatterSeries>
#include <QSvgGenerator>
#include <QVBoxLayout>
#include <QValueAxis>
#include <algorithm>
#include <vector>

#include "model/calculator.h"
#include "run/run_outcome.h"
#include "ui/chart_series.h"
#include "ui/output_viewer.h"

namespace quillet::ui {

namespace {

// The fitted model drawn smoothly between the first and last X, from the math-model file the
// run wrote beside the plot file (named after the response file); empty when there is none.
QList<QPointF> SmoothFit(const QString& plotPath, const PlotData& d) {
    if (d.data.size() < 2 || d.title.isEmpty()) return {};
    const auto [lo, hi] = std::minmax_element(d.data.begin(), d.data.end(),
                                              [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); });
    constexpr int kPoints = 1000;
    std::vector<double> xs(kPoints), ys;
    for (int i = 0; i < kPoints; ++i) xs[i] = lo->x() + (hi->x() - lo->x()) * i / (kPoints - 1);
    const QString equ = QFileInfo(plotPath).dir().filePath(d.title + ".equ");
    if (!ModelCurve(equ.toStdString(), xs, ys)) return {};
    QList<QPointF> curve;
    for (int i = 0; i < kPoints; ++i) curve.append({xs[i], ys[i]});
    return curve;
}

// Zooms with the mouse wheel as well as with the rubber band.
class ZoomableView : public QChartView {
  public:
    using QChartView::QChartView;

  protected:
    void wheelEvent(QWheelEvent* e) override { chart()->zoom(e->angleDelta().y() > 0 ? 1.25 : 0.8); }
};

QValueAxis* Axis(QChart* chart, Qt::Orientation o) {
    const auto axes = chart->axes(o);
    return axes.isEmpty() ? nullptr : qobject_cast<QValueAxis*>(axes.front());
}

void AddAxes(QChart* chart, const QString& xTitle, const QString& yTitle) {
    auto* x = new QValueAxis;
    auto* y = new QValueAxis;
    x->setTitleText(xTitle);
    y->setTitleText(yTitle);
    chart->addAxis(x, Qt::AlignBottom);
    chart->addAxis(y, Qt::AlignLeft);
    for (auto* s : chart->series()) {
        s->attachAxis(x);
        s->attachAxis(y);
    }
    x->applyNiceNumbers();
    y->applyNiceNumbers();
}

QChartView* NewView(QWidget* parent) {
    auto* view = new ZoomableView(new QChart, parent);
    view->setRubberBand(QChartView::RectangleRubberBand);
    view->setRenderHint(QPainter::Antialiasing);
    return view;
}

}  // namespace

PlotViewer::PlotViewer(QWidget* parent) : QDialog(parent) {
    setWindowTitle("Quillet plots");
    setSizeGripEnabled(true);
    charts_ = new QWidget(this);
    curveView_ = NewView(charts_);
    residualView_ = NewView(charts_);
    auto* chartsLayout = new QVBoxLayout(charts_);
    chartsLayout->setContentsMargins(0, 0, 0, 0);
    chartsLayout->addWidget(curveView_, 3);
    chartsLayout->addWidget(residualView_, 2);
    info_ = new QLabel(this);
    info_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    info_->setWordWrap(true);

    auto* buttons = new QHBoxLayout;
    auto add = [this, buttons](const QString& caption, const QString& tip, auto slot) {
        auto* b = new QPushButton(caption, this);
        b->setToolTip(tip);
        b->setAutoDefault(false);
        connect(b, &QPushButton::clicked, this, slot);
        buttons->addWidget(b);
        return b;
    };
    add("Zoom &In", "Or drag a rectangle, or turn the mouse wheel", [this] { ZoomIn(); });
    add("Zoom &Out", "", [this] { ZoomOut(); });
    add("&Reset Zoom", "", [this] { ResetZoom(); });
    buttons->addStretch();
    report_ = add("Show &Report", "The report of the run: ~Quillet.out", [this] { ShowReport(); });
    add("&Export ...", "Save the plots as PNG or SVG", [this] { Export(); });
    add("&Close", "", [this] { accept(); });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(charts_, 1);
    layout->addWidget(info_);
    layout->addLayout(buttons);
    resize(900, 700);
}

QChart* PlotViewer::curveChart() const {
    return curveView_->chart();
}
QChart* PlotViewer::residualChart() const {
    return residualView_->chart();
}
QString PlotViewer::infoText() const {
    return info_->text();
}
bool PlotViewer::chartsShown() const {
    return !charts_->isHidden();
}

void PlotViewer::ShowReport() {
    auto* viewer = new OutputViewer(this);
    viewer->setAttribute(Qt::WA_DeleteOnClose);
    viewer->Load(reportPath_);
    viewer->show();
}

bool PlotViewer::Load(const QString& path) {
    QString error;
    const bool ok = ReadPlotFile(path, data_, error);
    setWindowTitle("Quillet plots - " + QFileInfo(path).fileName());
    reportPath_ = QFileInfo(path).dir().filePath("~Quillet.out");
    const RunOutcome outcome = ReadRunOutcome(reportPath_.toStdString(), 0);
    report_->setVisible(!outcome.reportPath.empty());
    if (!ok) data_ = PlotData{};
    if (QList<QPointF> smooth = SmoothFit(path, data_); !smooth.isEmpty()) data_.fit = smooth;
    Show();
    // Empty axes would look like a fit of nothing: a failed run is said in words instead.
    charts_->setVisible(ok);
    auto number = [](const QString& text) {
        return text.isEmpty() ? QString("-") : QString::fromStdString(ShortNumberText(text.toStdString()));
    };
    if (ok)
        info_->setText(QString("%1Residual sum of squares: %2    Standard deviation: %3    Points: %4")
                           .arg(data_.verdict.isEmpty() ? QString() : "Verdict: " + data_.verdict + "    ",
                                number(data_.rss), number(data_.stddev))
                           .arg(data_.data.size()));
    else if (outcome.kind == RunOutcome::Kind::Failed)
        info_->setText("The last run failed: " + QString::fromStdString(outcome.reason));
    else
        info_->setText(error);
    return ok;
}

void PlotViewer::Show() {
    QChart* curve = curveChart();
    QChart* residual = residualChart();
    for (QChart* c : {curve, residual}) {
        c->removeAllSeries();
        for (auto* a : c->axes()) c->removeAxis(a);
    }
    curve->setTitle(data_.model.isEmpty() ? data_.title : data_.title + "  (" + data_.model + ")");
    curve->addSeries(Points("Data", data_.data, QColor(0x1f, 0x77, 0xb4)));
    curve->addSeries(Line("Fitted curve", data_.fit, QColor(0xd6, 0x27, 0x28)));
    AddAxes(curve, data_.xLabel, data_.yLabel);

    residual->setTitle("Residuals");
    residual->addSeries(Points("Residual", data_.residuals, QColor(0x2c, 0xa0, 0x2c)));
    QList<QPointF> zero;
    if (!data_.residuals.isEmpty()) {
        const auto [lo, hi] = std::minmax_element(data_.residuals.begin(), data_.residuals.end(),
                                                  [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); });
        zero = {QPointF(lo->x(), 0), QPointF(hi->x(), 0)};
    }
    residual->addSeries(Line("Zero", zero, Qt::gray));
    AddAxes(residual, data_.xLabel, "Residual");
    residual->legend()->hide();

    // Zooming the curve keeps the residuals over the same X range.
    if (auto* cx = Axis(curve, Qt::Horizontal), *rx = Axis(residual, Qt::Horizontal); cx && rx)
        connect(cx, &QValueAxis::rangeChanged, rx, [rx](qreal lo, qreal hi) { rx->setRange(lo, hi); });
}

void PlotViewer::ZoomIn() {
    curveChart()->zoomIn();
}
void PlotViewer::ZoomOut() {
    curveChart()->zoomOut();
}

void PlotViewer::ResetZoom() {
    curveChart()->zoomReset();
    residualChart()->zoomReset();
}

bool PlotViewer::ExportPng(const QString& path) {
    return charts_->grab().save(path, "PNG");
}

bool PlotViewer::ExportSvg(const QString& path) {
    QSvgGenerator svg;
    svg.setFileName(path);
    svg.setSize(charts_->size());
    svg.setViewBox(charts_->rect());
    svg.setTitle(windowTitle());
    QPainter painter;
    if (!painter.begin(&svg)) return false;
    charts_->render(&painter);
    return painter.end();
}

void PlotViewer::Export() {
    QString filter;
    const QString path = QFileDialog::getSaveFileName(this, "Export Plots", QString(),
                                                      "PNG image (*.png);;SVG drawing (*.svg)", &filter);
    if (path.isEmpty()) return;
    const bool svg = path.endsWith(".svg", Qt::CaseInsensitive) ||
                     (!path.endsWith(".png", Qt::CaseInsensitive) && filter.startsWith("SVG"));
    QString target = path;
    if (QFileInfo(target).suffix().isEmpty()) target += svg ? ".svg" : ".png";
    if (!(svg ? ExportSvg(target) : ExportPng(target))) info_->setText("Could not write " + target + ".");
}

}  // namespace quillet::ui
