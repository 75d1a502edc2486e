#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "document.h"
#include "preview.h"

namespace ledgix::zq {

struct BandInstance;
struct BandTemplate;
struct ItemTemplate;
struct ReportTemplate;

// A named place of a band. Its text lasts until it is set anew or a template is opened.
class Field {
public:
    explicit Field(const ItemTemplate& item);

    const std::string& name() const;
    const std::string& text() const { return text_; }
    void SetText(std::string text);

    // The text becomes the path. A picture that is missing or cannot be read leaves its place empty.
    void LoadPicture(const std::string& path);

    const ItemTemplate& item() const { return *item_; }
    // The bytes of the loaded picture's file; none when there is no picture.
    const std::shared_ptr<const std::string>& picture() const { return picture_; }

private:
    const ItemTemplate* item_;
    std::string text_;
    std::shared_ptr<const std::string> picture_;
};

// A section of the template. Names match in any case.
class Band {
public:
    explicit Band(const BandTemplate& band);

    const std::string& name() const;

    // Error 3265 when the band has no such field.
    Field& field(std::string_view name);

    const BandTemplate& layout() const { return *layout_; }
    const std::vector<Field>& fields() const { return fields_; }

private:
    const BandTemplate* layout_;
    std::vector<Field> fields_;  // in template order
};

// The layout engine: a template's bands are filled and printed one after the other, Show breaks them into pages. One
// report at a time; opening a template starts the next.
class zqReports {
public:
    zqReports();
    ~zqReports();
    zqReports(zqReports&&) noexcept;
    zqReports& operator=(zqReports&&) noexcept;

    // Reads a template for the region's paper and starts a new, empty document with every field at its default text.
    // False when the file is missing or no valid template; why() then says so, with the line, and there are no bands.
    // Bands and fields handed out before are gone.
    bool OpenTemplate(const std::string& path);
    const std::string& why() const { return why_; }

    // Error 3265 when the template has no such band, or none is open.
    Band& band(std::string_view name);

    // Appends one instance of the band with its fields' texts of now. Error 3265 as above.
    void PrintBand(std::string_view name);

    // The picture that belongs to the report. It lasts until a template is opened.
    void SetChart(Chart chart);

    struct Fit {
        std::string part;
        std::string rest;
    };
    // Divides the text behind what fits the field on one line: at a word's beginning, behind a line break (which
    // belongs to the part), or inside a word that is wider than the field. Part and rest joined are the text; the part
    // of a text that is not empty holds at least one character.
    Fit FitText(const Field& field, std::string_view text) const;

    // Names the document for those who save it; until the next template is opened.
    void SetName(std::string name);

    // Where Show sends the report: kToPreview (0, what holds until set) or kToPrinter (2). Error 5 for others.
    void SetDestination(int destination);

    // Ends the layout: breaks the printed bands into pages, numbers them and hands the document to the installed
    // preview. Error 91 when no template is open.
    void Show();

    // The event that the preview raises when the user presses its print button. Set it before Show.
    std::function<void()> PrintToPrinterButton;

    // The preview of this engine is open.
    bool PreviewOpen() const { return preview_window_ && preview_window_->IsOpen(); }

    // The bands printed so far; the pages are those of the last Show.
    const Document& document() const { return document_; }

private:
    std::unique_ptr<ReportTemplate> template_;
    std::vector<Band> bands_;
    std::vector<BandInstance> printed_;
    Document document_;
    int destination_ = kToPreview;
    std::unique_ptr<PreviewWindow> preview_window_;
    std::string why_;
};

}  // namespace ledgix::zq
