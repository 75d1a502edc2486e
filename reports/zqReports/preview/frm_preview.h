#pragma once

#include <QMainWindow>
#include <QPointer>
#include <functional>

#include "document.h"
#include "report_export.h"

class QAction;
class QActionGroup;
class QDockWidget;
class QLabel;
class QTabWidget;
class QToolBar;

namespace ledgix::preview {

class ChartPage;
class FindBar;
class PageList;
class PageView;

// The window on a finished report. It keeps a copy of the document, closes when its owner does, and is deleted when it
// is closed.
class frmPreview : public QMainWindow {
    Q_OBJECT

public:
    // `print_button` is called when the user presses the print button. The owner may be nullptr.
    frmPreview(const zq::Document& document, std::function<void()> print_button, QWidget* owner);

    PageView* view;
    QTabWidget* pages = nullptr;  // report and chart; only of a document with a chart, as the next one
    ChartPage* chartPage = nullptr;
    FindBar* findBar;
    PageList* lstPages;
    QAction* cmdPrint;
    QAction* cmdSavePdf;
    QAction* cmdSaveCsv;
    QAction* cmdPages;  // shows the list of pages
    QAction* cmdPageBack;
    QAction* cmdPageForward;
    QLabel* lblPage;  // "Page 1 of 2"
    QAction* cmdZoomOut;
    QAction* cmdZoomIn;
    QAction* cmdActualSize;  // shows the zoom
    QAction* cmdFitWidth;
    QAction* cmdFitPage;
    QAction* cmdFind;
    QAction* cmdClose;
    QAction* cmdCopy;  // this and the next one are in the view's context menu
    QAction* cmdSelectAll;

    // How the user chooses a file to save the report in.
    FileChoice ChooseFile = AskForFile;

public slots:
    void cmdPrint_Click();
    void cmdSavePdf_Click();
    void cmdSaveCsv_Click();
    void cmdPageBack_Click();
    void cmdPageForward_Click();
    void cmdZoomOut_Click();
    void cmdZoomIn_Click();
    void cmdActualSize_Click();
    void cmdFitWidth_Click();
    void cmdFitPage_Click();
    void cmdFind_Click();
    void cmdClose_Click();
    // Puts away what is open in the window, or else the window.
    void Escape();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* MakePages();
    QToolBar* MakeToolBar();
    void MakePageList();
    void AddViewCommands();
    void MakeReportCommands();
    QAction* AddToView(const char* name, const QString& text, const QKeySequence& key);
    void ShowTab();
    void ShowPage();
    void ShowZoom();

    zq::Document document_;
    std::function<void()> print_button_;
    QActionGroup* report_commands_;  // what moves and looks through the report's pages
    bool had_page_list_ = false;     // before the chart was shown
    QPointer<QWidget> owner_;
};

}  // namespace ledgix::preview
