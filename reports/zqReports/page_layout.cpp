#include "page_layout.h"

#include <algorithm>
#include <map>
#include <utility>

#include "characters.h"
#include "clock.h"
#include "message_box.h"
#include "placeholders.h"
#include "regional_settings.h"

namespace ledgix::zq {

namespace {

// Takes up what summing up heights loses, in points.
constexpr double kTolerance = 1e-3;

std::vector<BandImage> LayOutBands(const std::vector<BandInstance>& instances) {
    std::map<const BandTemplate*, double> scales;
    for (const BandInstance& instance : instances) {
        double& scale = scales.try_emplace(instance.band, 1).first->second;
        scale = std::min(scale, EvenScale(instance));
    }
    std::vector<BandImage> images;
    for (const BandInstance& instance : instances)
        images.push_back(LayOutBand(instance, scales[instance.band]));
    return images;
}

// A run of bands, such as the lines of a paragraph, ends at another band and behind a line break.
bool IsSameRun(const BandInstance& instance, const BandInstance& next) {
    if (!instance.band->runs || instance.band != next.band)
        return false;
    return std::none_of(instance.texts.begin(), instance.texts.end(),
                        [](const std::string& text) { return text.ends_with('\n') || text.ends_with('\r'); });
}

// Whether each instance stays on the page of the next one.
std::vector<bool> FindTies(const std::vector<BandInstance>& instances, const std::vector<BandImage>& images) {
    const std::size_t count = instances.size();
    std::vector<bool> tied(count, false);
    for (std::size_t i = 0; i + 1 < count; ++i) {
        const bool continues = IsSameRun(instances[i], instances[i + 1]);
        const bool is_first = i == 0 || !IsSameRun(instances[i - 1], instances[i]);
        const bool next_is_last = i + 2 == count || !IsSameRun(instances[i + 1], instances[i + 2]);
        const bool carries_on = i > 0 && tied[i - 1] && images[i].IsBlank();
        tied[i] = instances[i].band->keeps_with_next || carries_on || (continues && (is_first || next_is_last));
    }
    return tied;
}

void Append(Drawing& page, const Drawing& drawing, double x, double y) {
    for (PrintedBox box : drawing.boxes)
        page.boxes.push_back((box.left += x, box.top += y, box));
    for (PrintedLine line : drawing.lines)
        page.lines.push_back((line.x1 += x, line.x2 += x, line.y1 += y, line.y2 += y, line));
    for (PrintedPicture picture : drawing.pictures)
        page.pictures.push_back((picture.left += x, picture.top += y, picture));
    for (PrintedText text : drawing.texts)
        page.texts.push_back((text.left += x, text.baseline += y, text));
}

// Places images one below the other, on a new page where the current one is full.
class Paginator {
public:
    Paginator(double left, double top, double bottom) : left_(left), top_(top), bottom_(bottom), y_(top) {}

    // The images begin..end share a page if they fit on one.
    void PlaceTogether(const BandImage* begin, const BandImage* end) {
        double height = 0;
        for (const BandImage* image = begin; image != end; ++image)
            height += image->before + image->height + (image + 1 == end ? 0 : image->after);
        if (!Fits(height))
            at_top_ = true;
        for (const BandImage* image = begin; image != end; ++image)
            Place(*image);
    }

    std::vector<Drawing> TakePages() {
        if (pages_.empty())
            pages_.emplace_back();
        return std::move(pages_);
    }

private:
    bool Fits(double height) const { return y_ + height <= bottom_ + kTolerance; }

    void Place(const BandImage& image) {
        if (!at_top_ && !Fits(image.before + image.height))
            at_top_ = true;
        if (at_top_ && image.IsBlank())
            return;
        if (at_top_) {
            pages_.emplace_back();
            y_ = top_;
        } else {
            y_ += image.before;
        }
        at_top_ = false;
        Append(pages_.back(), image.drawing, left_, y_);
        y_ += image.height + image.after;
    }

    double left_;
    double top_;
    double bottom_;
    double y_;
    bool at_top_ = true;  // the next image begins a page
    std::vector<Drawing> pages_;
};

// The first printed text of the field "Band.Field" that is not empty.
std::string PrintedFieldText(const Document& document, std::string_view name) {
    for (const PrintedBand& band : document.bands)
        for (const PrintedField& field : band.fields)
            if (!field.text.empty() && name == band.name + "." + field.name)
                return OneLine(field.text);
    return {};
}

std::optional<std::string> LookUp(const Document& document, std::string_view name) {
    if (name == "program")
        return std::string(runtime::kProgramTitle);
    if (name == "date") {
        const runtime::RegionalSettings& region = runtime::Region();
        return runtime::FormatDate(runtime::SystemTime().Now(), region.short_date, region.month_abbreviations);
    }
    return PrintedFieldText(document, name);
}

BandImage LayOutFooter(const BandTemplate& footer, const Document& document, std::size_t page) {
    BandInstance instance{&footer, {}, std::vector<std::shared_ptr<const std::string>>(footer.items.size())};
    for (const ItemTemplate& item : footer.items)
        instance.texts.push_back(ExpandPlaceholders(item.text, [&](std::string_view name) {
            if (name == "page")
                return std::optional(std::to_string(page + 1));
            if (name == "pages")
                return std::optional(std::to_string(document.pages.size()));
            return LookUp(document, name);
        }));
    return LayOutBand(instance, EvenScale(instance));
}

std::string TitleOf(const ReportTemplate& report, const Document& document) {
    const std::string title =
        OneLine(ExpandPlaceholders(report.title, [&](std::string_view name) { return LookUp(document, name); }));
    return title.substr(std::min(title.find_first_not_of(' '), title.size()));
}

}  // namespace

void LayOutPages(const ReportTemplate& report, const std::vector<BandInstance>& instances, Document& document) {
    document.typeface = report.typeface;
    document.page_width = report.page_width;
    document.page_height = report.page_height;
    document.title = TitleOf(report, document);
    const BandImage footer = LayOutFooter(report.footer, document, 0);
    const double bottom = report.page_height - report.bottom;
    const std::vector<BandImage> images = LayOutBands(instances);
    const std::vector<bool> tied = FindTies(instances, images);
    Paginator paginator(report.left, report.top, bottom - footer.height - footer.before);
    for (std::size_t first = 0, i = 0; i < images.size(); ++i) {
        if (tied[i])
            continue;
        paginator.PlaceTogether(images.data() + first, images.data() + i + 1);
        first = i + 1;
    }
    document.pages = paginator.TakePages();
    for (std::size_t page = 0; page < document.pages.size(); ++page) {
        const BandImage image = LayOutFooter(report.footer, document, page);
        Append(document.pages[page], image.drawing, report.left, bottom - image.height);
    }
}

}  // namespace ledgix::zq
