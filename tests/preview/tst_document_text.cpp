#include "document_text.h"

#include <QTest>

#include "report_pages.h"
#include "text_places.h"
#include "zq_reports.h"

using ledgix::preview::DocumentText;
using ledgix::preview::IsOnText;
using ledgix::preview::PlaceOf;
using ledgix::preview::SpotAt;
using ledgix::preview::TextPart;
using ledgix::preview::TextRange;
using ledgix::preview::TextSpot;
using ledgix::test::ReportOf;
using ledgix::zq::Document;

class tst_DocumentText : public QObject {
    Q_OBJECT

private slots:
    void joinsTheTextsOfAllPages();
    void findsInAnyCase();
    void findsAcrossTheLinesOfAParagraph();
    void findsAcrossTheBandsOfAMemo();
    void blanksAreAlikeHoweverMany();
    void findsSignsThatAreNoPattern();
    void findsLettersOfOtherLanguages();
    void findsNothingForNothing();
    void partsAreThoseOfThePrintedTexts();
    void wordsEndAtBlanks();
    void aReportWithoutTextsHasNone();
    void placesCoverTheirCharacters();
    void placesOfSetBackTextsFollowTheirEdge();
    void spotsAreNearestToThePoint();
    void textsAreHitBetweenTheirEdges();

private:
    QStringList Found(const QString& wanted) const {
        QStringList texts;
        for (const TextRange& hit : text_.Find(wanted))
            texts += text_.text().mid(hit.start, hit.length);
        return texts;
    }

    Document document_ = ReportOf(2);
    DocumentText text_{document_};
};

void tst_DocumentText::joinsTheTextsOfAllPages() {
    const QString page = "Heading 1\nYour income means you have a\nsurplus each year.\nTotal Income\t$11,700.00";
    QCOMPARE(text_.PageText(0), page);
    QVERIFY(text_.text().startsWith(page + "\nHeading 2\n"));
    QCOMPARE(text_.PageText(1), text_.text().mid(page.size() + 1));
}

void tst_DocumentText::findsInAnyCase() {
    QCOMPARE(Found("INCOME"), QStringList({"income", "Income", "income", "Income"}));
    QCOMPARE(Found("heading 2"), QStringList({"Heading 2"}));
}

void tst_DocumentText::findsAcrossTheLinesOfAParagraph() {
    QCOMPARE(Found("have a surplus"), QStringList({"have a\nsurplus", "have a\nsurplus"}));
    const std::vector<TextPart> parts = text_.Parts(text_.Find("have a surplus")[1]);
    QCOMPARE(parts, (std::vector<TextPart>{{1, 1, 22, 6}, {1, 2, 0, 7}}));
}

// As the reports print one, with the product's own template.
void tst_DocumentText::findsAcrossTheBandsOfAMemo() {
    ledgix::zq::zqReports engine;
    QVERIFY(engine.OpenTemplate(LEDGIX_TEST_DATA "/../../reports/templates/profile.rdn"));
    ledgix::zq::Band& band = engine.band("freetext");
    std::string rest;
    for (int i = 1; i <= 60; ++i)
        rest += "sentence " + std::to_string(i) + " weighs income and expenses;  ";
    while (!rest.empty()) {
        const auto fit = engine.FitText(band.field("caption"), rest);
        band.field("caption").SetText(fit.part);
        rest = fit.rest;
        engine.PrintBand("freetext");
    }
    engine.Show();
    QVERIFY(engine.document().bands.size() > 10);
    const DocumentText text(engine.document());
    std::size_t parted = 0;
    for (int i = 1; i <= 60; ++i) {
        const auto hits = text.Find(QString("sentence %1 weighs income and expenses;").arg(i));
        QCOMPARE(hits.size(), 1U);
        parted += text.Parts(hits[0]).size() - 1;
    }
    QVERIFY(parted > 5);
}

void tst_DocumentText::blanksAreAlikeHoweverMany() {
    QCOMPARE(Found("  total   income $1").size(), 1);
    QCOMPARE(Found("totalincome").size(), 0);
}

void tst_DocumentText::findsSignsThatAreNoPattern() {
    QCOMPARE(Found("$11,700.00"), QStringList({"$11,700.00"}));
    QCOMPARE(Found("year."), QStringList({"year.", "year."}));
    QCOMPARE(Found("yea.."), QStringList());
    QCOMPARE(Found("(["), QStringList());
}

void tst_DocumentText::findsLettersOfOtherLanguages() {
    Document document = ReportOf(1);
    document.pages[0].texts[0].text =
        "Haus in Z\xC3\xBCrich \xE2\x82\xAC"
        "5";
    const DocumentText text(document);
    const std::vector<TextRange> hits = text.Find(QString::fromUtf8("Z\xC3\x9CRICH"));
    QCOMPARE(hits, (std::vector<TextRange>{{8, 6}}));
}

void tst_DocumentText::findsNothingForNothing() {
    QVERIFY(text_.Find("").empty());
    QVERIFY(text_.Find("  ").empty());
}

void tst_DocumentText::partsAreThoseOfThePrintedTexts() {
    QCOMPARE(text_.Parts({0, 7}), (std::vector<TextPart>{{0, 0, 0, 7}}));
    QCOMPARE(text_.Parts({9, 1}), std::vector<TextPart>());
    QCOMPARE(text_.Parts({0, text_.text().size()}).size(), 10U);
    QCOMPARE(text_.Position(0, 1, 5), 15);
    QCOMPARE(text_.Parts({text_.Position(1, 4, 1), 3}), (std::vector<TextPart>{{1, 4, 1, 3}}));
}

void tst_DocumentText::wordsEndAtBlanks() {
    const auto word = [&](qsizetype position) {
        const TextRange range = text_.WordAt(position);
        return text_.text().mid(range.start, range.length);
    };
    QCOMPARE(word(0), "Heading");
    QCOMPARE(word(6), "Heading");
    QCOMPARE(word(7), "Heading");
    QCOMPARE(word(8), "1");
    QCOMPARE(word(10), "Your");
    QCOMPARE(word(text_.text().size()), "$21,700.00");
}

void tst_DocumentText::aReportWithoutTextsHasNone() {
    Document document;
    document.pages.resize(1);
    const DocumentText text(document);
    QVERIFY(text.text().isEmpty());
    QVERIFY(text.PageText(0).isEmpty());
    QVERIFY(text.Find("a").empty());
    QCOMPARE(text.WordAt(0).length, 0);
    QCOMPARE(SpotAt(document, 0, {10, 10}).character, -1);
}

void tst_DocumentText::placesCoverTheirCharacters() {
    const QRectF whole = PlaceOf(document_, {0, 0, 0, 9});
    QCOMPARE(whole.left(), 60.0);
    QVERIFY(whole.top() < 70 && whole.bottom() > 80);
    const QRectF word = PlaceOf(document_, {0, 0, 0, 7});
    const QRectF number = PlaceOf(document_, {0, 0, 8, 1});
    QVERIFY(word.right() < number.left());
    QCOMPARE(number.right(), whole.right());
}

void tst_DocumentText::placesOfSetBackTextsFollowTheirEdge() {
    Document document = ReportOf(1);
    ledgix::zq::PrintedText& text = document.pages[0].texts[4];
    text.width = 40;
    for (const auto alignment : {ledgix::zq::Alignment::kLeft, ledgix::zq::Alignment::kRight}) {
        text.alignment = alignment;
        const QRectF place = PlaceOf(document, {0, 4, 0, 10});
        QVERIFY(std::abs(place.left() - 400) < 0.01);
        QVERIFY(std::abs(place.right() - 440) < 0.01);
    }
}

void tst_DocumentText::spotsAreNearestToThePoint() {
    const TextSpot start = SpotAt(document_, 0, {61, 78});
    QCOMPARE(start.index, 0U);
    QCOMPARE(start.character, 0);
    const TextSpot left = SpotAt(document_, 0, {0, 0});
    QCOMPARE(left.index, 0U);
    QCOMPARE(left.character, 0);
    const TextSpot amount = SpotAt(document_, 0, {590, 166});
    QCOMPARE(amount.index, 4U);
    QCOMPARE(amount.character, 10);
    const QRectF third = PlaceOf(document_, {0, 2, 3, 1});
    const TextSpot inside = SpotAt(document_, 0, {third.left() + 0.1, third.center().y()});
    QCOMPARE(inside.index, 2U);
    QCOMPARE(inside.character, 3);
}

void tst_DocumentText::textsAreHitBetweenTheirEdges() {
    QVERIFY(IsOnText(document_, 0, {70, 78}));
    QVERIFY(!IsOnText(document_, 0, {70, 300}));
    QVERIFY(!IsOnText(document_, 0, {300, 164}));
}

QTEST_MAIN(tst_DocumentText)
#include "tst_document_text.moc"
