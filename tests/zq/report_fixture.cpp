#include "report_fixture.h"

#include "conversions.h"
#include "formats.h"

namespace ledgix::test {

namespace {

std::string FieldText(const nlohmann::json& value) {
    if (value.is_string())
        return value;
    if (value.contains("oneOf"))
        return value["oneOf"][0];
    return runtime::FormatCurrency(runtime::LeadingNumber(value["currency"].get<std::string>()), runtime::Region());
}

}  // namespace

runtime::RegionalSettings RegionWithPaper(runtime::Paper paper) {
    runtime::RegionalSettings region = runtime::UnitedStates();
    region.paper = paper;
    return region;
}

std::string ProductFile(const std::string& name) {
    return LEDGIX_SOURCE "/reports/templates/" + name;
}

void PrintMemo(zq::zqReports& engine, std::string text) {
    zq::Field& caption = engine.band("freetext").field("caption");
    while (!text.empty()) {
        const zq::zqReports::Fit fit = engine.FitText(caption, text);
        caption.SetText(fit.part);
        text = fit.rest;
        engine.PrintBand("freetext");
    }
}

void PrintCase(zq::zqReports& engine, const nlohmann::json& bands) {
    for (const nlohmann::json& printed : bands) {
        if (printed.contains("memo")) {
            PrintMemo(engine, printed["memo"]);
            continue;
        }
        const std::string name = printed["band"];
        for (const auto& [field, value] : printed["fields"].items())
            if (value.is_object() && value.contains("picture"))
                engine.band(name).field(field).LoadPicture(ProductFile("reportlogo.bmp"));
            else
                engine.band(name).field(field).SetText(FieldText(value));
        engine.PrintBand(name);
    }
}

void ReportFixture::Open(const std::string& bands) {
    ASSERT_TRUE(engine_.OpenTemplate(folder_.Write("test.rdn", kTemplateHead + bands))) << engine_.why();
}

void ReportFixture::Print(std::string_view band, std::string_view field, const std::string& text) {
    engine_.band(band).field(field).SetText(text);
    engine_.PrintBand(band);
}

const zq::Document& ReportFixture::Show() {
    engine_.Show();
    return engine_.document();
}

zq::PrintedText ReportFixture::Find(const std::string& text) const {
    for (const zq::Drawing& page : engine_.document().pages)
        for (const zq::PrintedText& drawn : page.texts)
            if (drawn.text == text)
                return drawn;
    ADD_FAILURE() << "not drawn: " << text;
    return {};
}

std::string ReportFixture::PageTexts(std::size_t page) const {
    std::string texts;
    for (const zq::PrintedText& text : engine_.document().pages.at(page).texts)
        texts += (texts.empty() ? "" : "|") + text.text;
    return texts;
}

}  // namespace ledgix::test
