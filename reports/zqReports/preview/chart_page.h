#pragma once

#include <QWidget>

#include "chart_figures.h"
#include "report_export.h"

class QAction;
class QPushButton;
class QTableWidget;

namespace ledgix::preview {

class ChartView;

// A report's chart and, beside it, the table of its figures.
class ChartPage : public QWidget {
    Q_OBJECT

public:
    // `document` has a chart and outlives the page.
    ChartPage(const zq::Document& document, QWidget* parent);

    ChartView* chart;
    QTableWidget* tblFigures;
    QAction* cmdCopyTable;  // in the table's context menu
    QPushButton* cmdSaveChart;

    // How the user chooses a file to save the chart in.
    FileChoice ChooseFile = AskForFile;

public slots:
    void cmdCopyTable_Click();
    void cmdSaveChart_Click();

private:
    void MakeTable();
    int WidthOfTable() const;

    const zq::Document& document_;
    chart::Table table_;
};

}  // namespace ledgix::preview
