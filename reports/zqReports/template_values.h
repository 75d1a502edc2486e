#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "report_template.h"
#include "template_line.h"

namespace ledgix::zq {

// What the words of a template mean so far: its colours, its text defaults and the width that places refer to. Each
// function takes its words from a line and refuses others as the line does.
class TemplateValues {
public:
    double printable_width = 0;  // points
    double text_size = 10;
    Colour text_colour;

    void DefineColour(TemplateLine& line);

    // Not negative.
    double Millimetres(TemplateLine& line, std::string_view what) const;
    double TextSize(TemplateLine& line, std::string_view what, double most) const;
    double TextSize(TemplateLine& line) const;
    // "X to Y", behind a "from": "12" is 12 mm from the left margin, "-12" 12 mm from the right one, "12%" that part of
    // the width between them.
    void Places(TemplateLine& line, double& left, double& right) const;
    Colour ColourOf(TemplateLine& line) const;
    Alignment AlignmentOf(TemplateLine& line) const;
    RuleTemplate Rule(TemplateLine& line) const;
    FillTemplate Fill(TemplateLine& line) const;

private:
    double Place(TemplateLine& line, std::string_view what) const;

    std::map<std::string, Colour, std::less<>> colours_;
};

}  // namespace ledgix::zq
