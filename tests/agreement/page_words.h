#pragma once

#include <QProcess>
#include <QStringList>
#include <QXmlStreamReader>
#include <algorithm>
#include <cmath>
#include <vector>

#include "document.h"
#include "text_places.h"
#include "typeset.h"

// The words of pages with their places, however the pages came about.
namespace ledgix::test {

struct PlacedWord {
    QString text;
    double left = 0;  // points
    double baseline = 0;
};
using PageWords = std::vector<PlacedWord>;

// From left to right in lines from top to bottom. Outputs round places, each in its own way.
inline PageWords InReadingOrder(PageWords words) {
    constexpr double kSameLine = 1;
    std::sort(words.begin(), words.end(),
              [](const PlacedWord& a, const PlacedWord& b) { return a.baseline < b.baseline; });
    for (auto line = words.begin(); line != words.end();) {
        const auto end = std::find_if(
            line, words.end(), [&](const PlacedWord& word) { return word.baseline > line->baseline + kSameLine; });
        std::sort(line, end, [](const PlacedWord& a, const PlacedWord& b) { return a.left < b.left; });
        line = end;
    }
    return words;
}

// The words that the preview shows, where it marks them when they are selected.
inline std::vector<PageWords> WordsOfPreview(const zq::Document& document) {
    std::vector<PageWords> pages;
    for (std::size_t page = 0; page < document.pages.size(); ++page) {
        PageWords words;
        for (std::size_t i = 0; i < document.pages[page].texts.size(); ++i) {
            const zq::PrintedText& printed = document.pages[page].texts[i];
            const QString text = zq::FromUtf8(printed.text);
            qsizetype first = 0;
            for (const QString& word : text.split(' ')) {
                const preview::TextPart part{static_cast<int>(page), i, first, word.size()};
                if (!word.isEmpty())
                    words.push_back({word, preview::PlaceOf(document, part).left(), printed.baseline});
                first += word.size() + 1;
            }
        }
        pages.push_back(InReadingOrder(words));
    }
    return pages;
}

// What pdftotext finds. It gives the box around a word, as high as the typeface reaches.
inline std::vector<PageWords> WordsOfPdf(const QString& path) {
    constexpr double kAboveBaseline = 0.905 / (0.905 + 0.212);
    QProcess reader;
    reader.start("pdftotext", {"-bbox", path, "-"});
    if (!reader.waitForFinished() || reader.exitCode() != 0)
        return {};
    std::vector<PageWords> pages;
    for (QXmlStreamReader xml(reader.readAllStandardOutput()); !xml.atEnd(); xml.readNext()) {
        if (!xml.isStartElement())
            continue;
        const auto measure = [&](const char* name) { return xml.attributes().value(QLatin1String(name)).toDouble(); };
        if (xml.name() == QLatin1String("page"))
            pages.emplace_back();
        if (xml.name() != QLatin1String("word"))
            continue;
        const double top = measure("yMin");
        const double baseline = top + (measure("yMax") - top) * kAboveBaseline;
        const double left = measure("xMin");
        pages.back().push_back({xml.readElementText(), left, baseline});
    }
    std::transform(pages.begin(), pages.end(), pages.begin(), InReadingOrder);
    return pages;
}

// Where two pages differ, in words; empty when they have the same words at the same places.
inline QString DifferenceOf(const PageWords& one, const PageWords& other) {
    constexpr double kSamePlace = 1;
    const auto told = [](const PageWords& words, std::size_t at) {
        return at < words.size() ? QString("'%1' at %2, %3")
                                       .arg(words[at].text)
                                       .arg(words[at].left, 0, 'f', 1)
                                       .arg(words[at].baseline, 0, 'f', 1)
                                 : QString("nothing");
    };
    for (std::size_t i = 0; i < std::max(one.size(), other.size()); ++i) {
        const bool same = i < one.size() && i < other.size() && one[i].text == other[i].text &&
                          std::abs(one[i].left - other[i].left) < kSamePlace &&
                          std::abs(one[i].baseline - other[i].baseline) < kSamePlace;
        if (!same)
            return QString("word %1: %2, but %3").arg(i + 1).arg(told(one, i), told(other, i));
    }
    return {};
}

inline QString DifferenceOf(const std::vector<PageWords>& one, const std::vector<PageWords>& other) {
    if (one.empty() || one.size() != other.size())
        return QString("%1 pages, but %2").arg(one.size()).arg(other.size());
    for (std::size_t page = 0; page < one.size(); ++page)
        if (const QString difference = DifferenceOf(one[page], other[page]); !difference.isEmpty())
            return QString("page %1, %2").arg(page + 1).arg(difference);
    return {};
}

}  // namespace ledgix::test
