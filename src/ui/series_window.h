#pragma once
// The results of a series of fits: the table (sortable, copied as CSV) and one parameter with
// its error bars against the file's position in the series.
#include <QDialog>

#include "fitting/series.h"

class QComboBox;
class QTableWidget;

namespace quillet::ui {

class ParameterPlot;

class SeriesWindow : public QDialog {
    Q_OBJECT
  public:
    SeriesWindow(fitting::SeriesTable table, QWidget* parent = nullptr);
    QTableWidget* table() const { return grid_; }
    QComboBox* parameter() const { return parameter_; }

  private:
    void Fill();
    void ShowParameter(int k);

    fitting::SeriesTable table_;
    QTableWidget* grid_;
    QComboBox* parameter_;
    ParameterPlot* plot_;
};

}  // namespace quillet::ui
