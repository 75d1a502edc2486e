#pragma once

#include <string>

#include "report_template.h"
#include "template_line.h"
#include "template_values.h"

namespace ledgix::zq {

// True when the word begins a statement that belongs into a band.
bool IsBandStatement(const std::string& word);

// Reads the rest of such a statement into the band. Error 5 as TemplateLine says.
void ReadBandStatement(const std::string& word, TemplateLine& line, const TemplateValues& values, BandTemplate& band);

}  // namespace ledgix::zq
