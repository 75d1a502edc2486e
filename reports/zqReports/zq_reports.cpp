#include "zq_reports.h"

#include <optional>
#include <utility>

#include "band_layout.h"
#include "files.h"
#include "page_layout.h"
#include "regional_settings.h"
#include "report_template.h"
#include "runtime_error.h"
#include "template_reader.h"
#include "text.h"
#include "text_fitting.h"

namespace ledgix::zq {

namespace {

[[noreturn]] void RaiseNotFound(std::string_view what, std::string_view name) {
    runtime::RaiseError(runtime::ErrorNumber::kItemNotFound,
                        "The report template has no " + std::string(what) + " '" + std::string(name) + "'.");
}

BandInstance ToInstance(const Band& band) {
    BandInstance instance{&band.layout(), {}, {}};
    auto field = band.fields().begin();
    for (const ItemTemplate& item : band.layout().items) {
        const bool is_label = item.kind == ItemTemplate::Kind::kLabel;
        instance.texts.push_back(is_label ? item.text : field->text());
        instance.pictures.push_back(is_label ? nullptr : field->picture());
        if (!is_label)
            ++field;
    }
    return instance;
}

}  // namespace

Field::Field(const ItemTemplate& item) : item_(&item), text_(item.text) {}

const std::string& Field::name() const {
    return item_->name;
}

void Field::SetText(std::string text) {
    text_ = std::move(text);
    picture_.reset();
}

void Field::LoadPicture(const std::string& path) {
    SetText(path);
    if (item_->kind != ItemTemplate::Kind::kPicture)
        return;
    try {
        if (const std::optional<std::string> file = runtime::FindFile(path))
            picture_ = std::make_shared<const std::string>(runtime::ReadFile(*file));
    } catch (const runtime::RuntimeError&) {
        // The place stays empty.
    }
}

Band::Band(const BandTemplate& band) : layout_(&band) {
    for (const ItemTemplate& item : band.items)
        if (item.kind != ItemTemplate::Kind::kLabel)
            fields_.emplace_back(item);
}

const std::string& Band::name() const {
    return layout_->name;
}

Field& Band::field(std::string_view name) {
    for (Field& field : fields_)
        if (runtime::EqualsIgnoringCase(field.name(), name))
            return field;
    RaiseNotFound("field", std::string(this->name()) + "." + std::string(name));
}

zqReports::zqReports() = default;
zqReports::~zqReports() = default;
zqReports::zqReports(zqReports&&) noexcept = default;
zqReports& zqReports::operator=(zqReports&&) noexcept = default;

bool zqReports::OpenTemplate(const std::string& path) {
    bands_.clear();
    printed_.clear();
    template_.reset();
    document_ = {};
    why_.clear();
    try {
        const std::string file = runtime::FindFile(path).value_or(path);
        template_ = std::make_unique<ReportTemplate>(ReadTemplate(runtime::ReadFile(file), runtime::Region().paper));
    } catch (const runtime::RuntimeError& error) {
        why_ = path + ": " + error.description();
        return false;
    }
    for (const BandTemplate& band : template_->bands)
        bands_.emplace_back(band);
    return true;
}

Band& zqReports::band(std::string_view name) {
    for (Band& band : bands_)
        if (runtime::EqualsIgnoringCase(band.name(), name))
            return band;
    RaiseNotFound("band", name);
}

void zqReports::PrintBand(std::string_view name) {
    printed_.push_back(ToInstance(band(name)));
    document_.bands.push_back(ToPrintedBand(printed_.back()));
}

void zqReports::SetChart(Chart chart) {
    document_.chart = std::move(chart);
}

zqReports::Fit zqReports::FitText(const Field& field, std::string_view text) const {
    const ItemTemplate& item = field.item();
    const std::size_t length = FittingLength(text, item.right - item.left, item.size, item.bold);
    return {std::string(text.substr(0, length)), std::string(text.substr(length))};
}

void zqReports::SetName(std::string name) {
    document_.name = std::move(name);
}

void zqReports::SetDestination(int destination) {
    if (destination != kToPreview && destination != kToPrinter)
        runtime::RaiseError(runtime::ErrorNumber::kInvalidArgument);
    destination_ = destination;
}

void zqReports::Show() {
    if (!template_)
        runtime::RaiseError(runtime::ErrorNumber::kObjectNotSet);
    LayOutPages(*template_, printed_, document_);
    Preview* preview = InstalledPreview();
    if (!preview)
        return;
    if (destination_ == kToPrinter)
        preview->Print(document_);
    else
        preview_window_ = preview->Show(document_, PrintToPrinterButton);
}

}  // namespace ledgix::zq
