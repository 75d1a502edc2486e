#include "document_text.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace ledgix::preview {

namespace {

bool OnOneLine(const zq::PrintedText& one, const zq::PrintedText& other) {
    // In points. Texts of one line share their baseline, other lines lie a text's height away.
    constexpr double kSameBaseline = 0.5;
    return std::abs(one.baseline - other.baseline) < kSameBaseline;
}

}  // namespace

DocumentText::DocumentText(const zq::Document& document) {
    for (std::size_t page = 0; page < document.pages.size(); ++page) {
        const std::vector<zq::PrintedText>& texts = document.pages[page].texts;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            if (!pieces_.empty())
                text_ += i > 0 && OnOneLine(texts[i - 1], texts[i]) ? '\t' : '\n';
            const QString text = QString::fromStdString(texts[i].text);
            pieces_.push_back({static_cast<int>(page), i, {text_.size(), text.size()}});
            text_ += text;
        }
    }
}

QString DocumentText::PageText(int page) const {
    qsizetype start = text_.size();
    qsizetype end = 0;
    for (const Piece& piece : pieces_) {
        if (piece.page != page)
            continue;
        start = std::min(start, piece.range.start);
        end = std::max(end, piece.range.end());
    }
    return end > start ? text_.mid(start, end - start) : QString();
}

std::vector<TextRange> DocumentText::Find(const QString& wanted) const {
    std::vector<TextRange> found;
    QStringList words;
    for (const QString& word : wanted.simplified().split(' ', Qt::SkipEmptyParts))
        words += QRegularExpression::escape(word);
    if (words.isEmpty())
        return found;
    const QRegularExpression pattern(
        words.join("\\s+"), QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    for (auto match = pattern.globalMatch(text_); match.hasNext();) {
        const QRegularExpressionMatch hit = match.next();
        found.push_back({hit.capturedStart(), hit.capturedLength()});
    }
    return found;
}

std::vector<TextPart> DocumentText::Parts(TextRange range) const {
    std::vector<TextPart> parts;
    for (const Piece& piece : pieces_) {
        const qsizetype start = std::max(range.start, piece.range.start);
        const qsizetype end = std::min(range.end(), piece.range.end());
        if (start < end)
            parts.push_back({piece.page, piece.index, start - piece.range.start, end - start});
    }
    return parts;
}

qsizetype DocumentText::Position(int page, std::size_t index, qsizetype character) const {
    for (const Piece& piece : pieces_)
        if (piece.page == page && piece.index == index)
            return piece.range.start + character;
    return 0;
}

TextRange DocumentText::WordAt(qsizetype position) const {
    const auto in_word = [&](qsizetype at) { return at >= 0 && at < text_.size() && !text_[at].isSpace(); };
    qsizetype start = position;
    if (!in_word(start) && in_word(start - 1))
        --start;
    qsizetype end = start;
    while (in_word(start - 1))
        --start;
    while (in_word(end))
        ++end;
    return {start, end - start};
}

}  // namespace ledgix::preview
