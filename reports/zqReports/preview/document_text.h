#pragma once

#include <QString>
#include <vector>

#include "document.h"

namespace ledgix::preview {

// A run of characters in the text of a report.
struct TextRange {
    qsizetype start = 0;
    qsizetype length = 0;
    qsizetype end() const { return start + length; }
    bool operator==(const TextRange&) const = default;
};

// A part of one printed text.
struct TextPart {
    int page = 0;
    std::size_t index = 0;  // among the page's texts
    qsizetype first = 0;    // character of the text
    qsizetype length = 0;
    bool operator==(const TextPart&) const = default;
};

// The texts of all pages in the order of printing, joined to one: a tab stands between texts on one line of their page,
// a line break between others. Positions count characters of it.
class DocumentText {
public:
    explicit DocumentText(const zq::Document& document);

    const QString& text() const { return text_; }
    QString PageText(int page) const;

    // Every place of the wanted words, in any case, without overlaps. Blanks, tabs and line breaks are alike, one or
    // many, so that words of a paragraph are found that are broken into lines. Nothing for an empty text.
    std::vector<TextRange> Find(const QString& wanted) const;

    // The printed texts that a range touches.
    std::vector<TextPart> Parts(TextRange range) const;

    // The position of a character of a printed text.
    qsizetype Position(int page, std::size_t index, qsizetype character) const;

    // The word at a position; of length 0 between words.
    TextRange WordAt(qsizetype position) const;

private:
    struct Piece {
        int page = 0;
        std::size_t index = 0;
        TextRange range;
    };

    QString text_;
    std::vector<Piece> pieces_;
};

}  // namespace ledgix::preview
