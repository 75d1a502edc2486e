#pragma once

#include <QApplication>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>
#include <string>

#include "document.h"
#include "frm_preview.h"
#include "page_view.h"

namespace ledgix::test {

// Pages of A4 with a heading, two lines of a memo and an amount each.
inline zq::Document ReportOf(int pages, const std::string& title = "Profile : Tom") {
    zq::Document document;
    document.title = title;
    document.typeface = "Liberation Sans";
    document.page_width = 595.28;
    document.page_height = 841.89;
    const auto text = [](double left, double baseline, double width, double size, const std::string& content) {
        return zq::PrintedText{left, baseline, width, size, false, zq::Alignment::kLeft, {}, content};
    };
    for (int i = 1; i <= pages; ++i) {
        zq::Drawing page;
        page.boxes.push_back({60, 150, 300, 20, {200, 210, 220}});
        page.lines.push_back({60, 90, 500, 90, 0.5, {}});
        page.texts.push_back(text(60, 80, 100, 16, "Heading " + std::to_string(i)));
        page.texts.push_back(text(60, 120, 170, 10, "Your income means you have a"));
        page.texts.push_back(text(60, 134, 90, 10, "surplus each year."));
        page.texts.push_back(text(60, 164, 80, 10, "Total Income"));
        page.texts.push_back(text(400, 164, 50, 10, "$" + std::to_string(i) + "1,700.00"));
        document.pages.push_back(page);
    }
    return document;
}

// What the program keeps for its user lies in a folder of the test's own.
class OwnSettings {
public:
    OwnSettings() { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder_.path()); }

private:
    QTemporaryDir folder_;
};

// What pdftotext reads, page by page.
inline QStringList PdfPages(const QString& path) {
    QProcess reader;
    reader.start("pdftotext", {"-layout", path, "-"});
    if (!reader.waitForFinished() || reader.exitCode() != 0)
        return {};
    QStringList pages = QString::fromUtf8(reader.readAllStandardOutput()).split('\f');
    pages.removeLast();
    return pages;
}

inline void Click(const preview::frmPreview& window, const QString& button) {
    auto* found = window.findChild<QToolButton*>(button);
    QVERIFY2(found, qPrintable(button));
    QTest::mouseClick(found, Qt::LeftButton);
}

inline void TurnWheel(QWidget* widget, QPoint place, int turns, Qt::KeyboardModifiers modifiers = {}) {
    QWheelEvent event(place, widget->mapToGlobal(place), {}, QPoint(0, turns), Qt::NoButton, modifiers,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
}

}  // namespace ledgix::test
