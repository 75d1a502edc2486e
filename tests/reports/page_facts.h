#pragma once

#include <string>
#include <vector>

#include "document.h"
#include "report_template.h"

// What is wrong with the pages of a document, told one by one.
namespace ledgix::test {

std::string WithoutBlanks(const std::string& text);

// The texts of the bands, labels included, and of the pages without their footers; both without blanks.
std::string TextOfBands(const zq::Document& document);
std::string TextOfPages(const zq::Document& document);

std::vector<std::string> FooterOf(const zq::Drawing& page);

// What reaches beyond the margins, or down into the footer.
std::vector<std::string> OutsideOf(const zq::Document& document, const zq::ReportTemplate& measures);

// Pairs of texts that overlap, or stand in one line with less than a blank between them.
std::vector<std::string> Collisions(const zq::Document& document);

// Texts that are smaller than small print, or pressed together.
std::vector<std::string> Unreadable(const zq::Document& document);

// Bands with texts on more than one page.
std::vector<std::string> PartedBands(const zq::Document& document);

}  // namespace ledgix::test
