#include "ui/data_view.h"

#include <QChart>
#include <QChartView>
#include <QHeaderView>
#include <QLabel>
#include <QLineSeries>
#include <QScatterSeries>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QValueAxis>
#include <algorithm>

#include "env/paths.h"
#include "env/settings.h"
#include "fitting/data_view.h"
#include "model/catalogue.h"
#include "model/form_events.h"
#include "run/run_outcome.h"
#include "ui/chart_series.h"
#include "ui/plot_file.h"

namespace quillet::ui {

namespace {

constexpr int kRestMs = 300;

QList<QPointF> Pairs(const std::vector<double>& x, const std::vector<double>& y) {
    QList<QPointF> out;
    out.reserve(static_cast<qsizetype>(x.size()));
    for (std::size_t i = 0; i < x.size(); ++i) out.append({x[i], y[i]});
    return out;
}

template <class S>
S* SeriesNamed(QChartView* view, const QString& name) {
    for (auto* s : view->chart()->series())
        if (s->name() == name) return qobject_cast<S*>(s);
    return nullptr;
}

QList<QPointF> PointsOf(QChartView* view, const QString& name) {
    auto* s = SeriesNamed<QXYSeries>(view, name);
    return s ? s->points() : QList<QPointF>{};
}

QChartView* NewView(QWidget* parent) {
    auto* chart = new QChart;
    chart->setMargins(QMargins(2, 2, 2, 2));
    chart->legend()->setAlignment(Qt::AlignBottom);
    auto* view = new QChartView(chart, parent);
    view->setRenderHint(QPainter::Antialiasing);
    view->setMinimumSize(200, 120);
    return view;
}

// As many value labels as the height holds: Qt Charts elides crowded ones to "...".
void FitTicks(QChartView* view) {
    for (QAbstractAxis* a : view->chart()->axes(Qt::Vertical))
        if (auto* y = qobject_cast<QValueAxis*>(a)) y->setTickCount(std::clamp(view->height() / 45, 2, 6));
}

void Fill(QChartView* view, const std::vector<QXYSeries*>& series, bool legend) {
    QChart* chart = view->chart();
    chart->removeAllSeries();
    for (auto* a : chart->axes()) chart->removeAxis(a);
    auto* x = new QValueAxis;
    auto* y = new QValueAxis;
    chart->addAxis(x, Qt::AlignBottom);
    chart->addAxis(y, Qt::AlignLeft);
    for (QXYSeries* s : series) {
        chart->addSeries(s);
        s->attachAxis(x);
        s->attachAxis(y);
    }
    // The axes span what is drawn; Qt Charts would keep 0 to 1 for series added after the axes.
    double x0 = 0, x1 = 1, y0 = 0, y1 = 1;
    bool any = false;
    for (QXYSeries* s : series)
        for (const QPointF& p : s->points()) {
            if (!any) x0 = x1 = p.x(), y0 = y1 = p.y();
            x0 = std::min(x0, p.x()), x1 = std::max(x1, p.x()), y0 = std::min(y0, p.y()), y1 = std::max(y1, p.y());
            any = true;
        }
    if (x1 == x0) x0 -= 1, x1 += 1;
    if (y1 == y0) y0 -= 1, y1 += 1;
    x->setRange(x0, x1);
    y->setRange(y0, y1);
    x->applyNiceNumbers();
    y->applyNiceNumbers();
    x->setLabelFormat("%.4g");
    y->setLabelFormat("%.4g");
    chart->legend()->setVisible(legend);
    FitTicks(view);
}

}  // namespace

DataView::DataView(AppState& s, QWidget* parent) : QWidget(parent), s_(s) {
    setObjectName("dataView");
    message_ = new QLabel(this);
    message_->setObjectName("dataViewMessage");
    message_->setWordWrap(true);
    message_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    verdict_ = new QLabel(this);
    verdict_->setObjectName("dataViewVerdict");
    verdict_->setWordWrap(true);
    layout_ = new QVBoxLayout(this);
    layout_->setContentsMargins(0, 0, 0, 0);
    layout_->addStretch(3);  // where the charts go
    layout_->addWidget(message_);
    layout_->addWidget(verdict_);

    timer_.setSingleShot(true);
    timer_.setInterval(kRestMs);
    connect(&timer_, &QTimer::timeout, this, &DataView::Redraw);
}

void DataView::ScheduleRedraw() {
    timer_.start();
}

// The charts and the table are made when there is first something to show: empty, they cost a
// tenth of the program's start.
void DataView::MakeViews() {
    curveView_ = NewView(this);
    residualView_ = NewView(this);
    residualView_->setMinimumHeight(110);
    table_ = new QTableWidget(0, 4, this);
    table_->setObjectName("dataViewParameters");
    table_->setHorizontalHeaderLabels({"Name", "Fitted", "Std. error", "Physical"});
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->setWordWrap(false);
    table_->verticalHeader()->setDefaultSectionSize(table_->fontMetrics().height() + 6);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setMaximumHeight(160);
    delete layout_->takeAt(0);
    layout_->insertWidget(0, curveView_, 3);
    layout_->insertWidget(2, residualView_, 1);
    layout_->addWidget(table_);
}

void DataView::Redraw() {
    timer_.stop();
    if (!curveView_) MakeViews();
    const std::string folder = s_.DataDir.empty() ? s_.UserDir : s_.DataDir;
    const fitting::DataViewContent v = fitting::ComputeDataView(RecordOnForm(s_), folder);

    // The last run of this response file: its report names the file, its plot file is named after it.
    QList<QPointF> fit, residuals;
    RunOutcome last;
    if (!s_.CurrentFile.empty() && s_.CurrentFile != kNewData) {
        const std::string output = JoinPath(s_.UserDir, "output");
        last = ReadRunOutcome(JoinPath(output, "~Quillet.out"), 0);
        if (last.responsePath != JoinPath(s_.UserDir, s_.CurrentFile)) last = RunOutcome{};
        PlotData plot;
        QString error;
        if (last.kind != RunOutcome::Kind::Failed && last.kind != RunOutcome::Kind::Unknown &&
            ReadPlotFile(QString::fromStdString(JoinPath(output, PlotFileNameFor(s_.CurrentFile))), plot, error)) {
            fit = plot.fit;
            residuals = plot.residuals;
        }
    }

    std::vector<QXYSeries*> curves = {Points("Data", Pairs(v.x, v.y), QColor(0x1f, 0x77, 0xb4), 5),
                                      Line("Starting curve", Pairs(v.startX, v.startY), QColor(0xff, 0x7f, 0x0e))};
    if (!fit.isEmpty()) curves.push_back(Line("Last fit", fit, QColor(0xd6, 0x27, 0x28)));
    Fill(curveView_, curves, true);
    Fill(residualView_, {Points("Residual", residuals, QColor(0x2c, 0xa0, 0x2c), 4)}, false);
    residualView_->chart()->setTitle(residuals.isEmpty() ? QString() : "Residuals of the last fit");
    residualView_->setVisible(!residuals.isEmpty());

    QString message = QString::fromStdString(v.dataMessage.empty() ? v.curveMessage : v.dataMessage);
    if (v.dataMessage.empty() && v.points > static_cast<int>(v.x.size()))
        message = QString("%1 points, every %2th drawn. ").arg(v.points).arg((v.points + v.x.size() - 1) / v.x.size()) +
                  message;
    message_->setText(message);
    message_->setVisible(!message.isEmpty());

    QString verdict = QString::fromStdString(OutcomeLine(last));
    for (const auto& flag : last.flags) verdict += "\nFlagged: " + QString::fromStdString(flag);
    if (!verdict.isEmpty()) verdict = "Last run: " + verdict;
    verdict_->setText(verdict);
    verdict_->setVisible(!verdict.isEmpty());
    table_->setRowCount(static_cast<int>(last.parameters.size()));
    for (int r = 0; r < table_->rowCount(); ++r) {
        const auto& p = last.parameters[static_cast<std::size_t>(r)];
        int c = 0;
        for (const std::string* text : {&p.name, &p.fitted, &p.stdError, &p.physical})
            table_->setItem(r, c++, new QTableWidgetItem(QString::fromStdString(*text)));
    }
    table_->setVisible(table_->rowCount() > 0);
}

QList<QPointF> DataView::points() const {
    return curveView_ ? PointsOf(curveView_, "Data") : QList<QPointF>{};
}
QList<QPointF> DataView::startCurve() const {
    return curveView_ ? PointsOf(curveView_, "Starting curve") : QList<QPointF>{};
}
QList<QPointF> DataView::fittedCurve() const {
    return curveView_ ? PointsOf(curveView_, "Last fit") : QList<QPointF>{};
}
QString DataView::message() const {
    return message_->text();
}
QString DataView::verdict() const {
    return verdict_->text();
}

void DataView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (!curveView_) return;
    FitTicks(curveView_);
    FitTicks(residualView_);
}

}  // namespace quillet::ui
