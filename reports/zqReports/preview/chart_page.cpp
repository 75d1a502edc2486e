#include "chart_page.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>

#include "chart_export.h"
#include "chart_view.h"
#include "event_trap.h"
#include "regional_settings.h"

namespace ledgix::preview {

namespace {

constexpr int kMargin = 12;
constexpr int kSpacing = 8;

// Two lines of about the same length, so that a heading is no wider than its figures.
QString InTwoLines(QString text) {
    qsizetype best = -1;
    for (qsizetype at = text.indexOf(' '); at >= 0; at = text.indexOf(' ', at + 1))
        if (best < 0 || qAbs(text.size() - 2 * at) < qAbs(text.size() - 2 * best))
            best = at;
    return best < 0 ? text : text.replace(best, 1, '\n');
}

QStringList ToList(const std::vector<std::string>& texts) {
    QStringList list;
    for (const std::string& text : texts)
        list += QString::fromStdString(text);
    return list;
}

}  // namespace

ChartPage::ChartPage(const zq::Document& document, QWidget* parent)
    : QWidget(parent), document_(document), table_(chart::ToTable(*document.chart, runtime::Region())) {
    const runtime::RegionalSettings& region = runtime::Region();
    chart = new ChartView(chart::ToSheet(*document.chart, region),
                          QString::fromStdString(chart::Describe(*document.chart, region)), this);
    chart->setObjectName("chart");
    MakeTable();
    cmdSaveChart = new QPushButton("Save Char&t...", this);
    cmdSaveChart->setObjectName("cmdSaveChart");
    cmdSaveChart->setAccessibleName("Save Chart");
    cmdSaveChart->setToolTip("Save the chart as a PNG or SVG picture");
    connect(cmdSaveChart, &QPushButton::clicked, this, controls::Handler(this, &ChartPage::cmdSaveChart_Click));
    auto* side = new QWidget(this);
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kSpacing);
    column->addWidget(tblFigures);
    column->addWidget(cmdSaveChart, 0, Qt::AlignRight);
    auto* parts = new QSplitter(this);
    parts->setHandleWidth(kSpacing);
    parts->setChildrenCollapsible(false);
    parts->addWidget(chart);
    parts->addWidget(side);
    parts->setStretchFactor(0, 1);
    parts->setStretchFactor(1, 0);
    // Huge figures must not push the chart aside.
    parts->setSizes({chart->sizeHint().width(), qMin(WidthOfTable(), chart->sizeHint().width())});
    auto* all = new QHBoxLayout(this);
    all->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    all->addWidget(parts);
}

void ChartPage::MakeTable() {
    tblFigures = new QTableWidget(static_cast<int>(table_.rows.size()), static_cast<int>(table_.columns.size()), this);
    tblFigures->setObjectName("tblFigures");
    tblFigures->setAccessibleName("Figures of the chart");
    tblFigures->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tblFigures->setTabKeyNavigation(false);
    tblFigures->setAlternatingRowColors(true);
    tblFigures->setCornerButtonEnabled(false);
    tblFigures->setVerticalHeaderLabels(ToList(table_.rows));
    QStringList headings = ToList(table_.columns);
    for (QString& heading : headings)
        heading = InTwoLines(heading);
    tblFigures->setHorizontalHeaderLabels(headings);
    tblFigures->horizontalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (int row = 0; row < tblFigures->rowCount(); ++row)
        for (int column = 0; column < tblFigures->columnCount(); ++column) {
            const auto& cells = table_.cells[static_cast<std::size_t>(row)];
            auto* item = new QTableWidgetItem(QString::fromStdString(cells[static_cast<std::size_t>(column)]));
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            tblFigures->setItem(row, column, item);
        }
    tblFigures->horizontalHeader()->setHighlightSections(false);
    tblFigures->verticalHeader()->setHighlightSections(false);
    tblFigures->resizeColumnsToContents();
    tblFigures->setCurrentCell(0, 0);
    cmdCopyTable = new QAction("&Copy Table", this);
    cmdCopyTable->setObjectName("cmdCopyTable");
    cmdCopyTable->setShortcut(QKeySequence::Copy);
    tblFigures->addAction(cmdCopyTable);
    tblFigures->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(cmdCopyTable, &QAction::triggered, this, controls::Handler(this, &ChartPage::cmdCopyTable_Click));
}

int ChartPage::WidthOfTable() const {
    return tblFigures->verticalHeader()->sizeHint().width() + tblFigures->horizontalHeader()->length() +
           tblFigures->verticalScrollBar()->sizeHint().width() + 2 * tblFigures->frameWidth();
}

void ChartPage::cmdCopyTable_Click() {
    QApplication::clipboard()->setText(QString::fromStdString(chart::ToTabbed(table_)));
}

void ChartPage::cmdSaveChart_Click() {
    SaveChart(document_, window(), ChooseFile);
}

}  // namespace ledgix::preview
