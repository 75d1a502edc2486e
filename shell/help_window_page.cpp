#include "help_window_page.h"

#include <QCoreApplication>

namespace ledgix::shell {

namespace {

const QString kScheme = QStringLiteral("topic");

QString Escaped(const std::string& text) {
    return QString::fromStdString(text).toHtmlEscaped();
}

// What stands around all neighbouring blocks of one kind.
struct Frame {
    const char* begin = "";
    const char* end = "";
};

Frame FrameOf(HelpBlock::Kind kind) {
    switch (kind) {
        case HelpBlock::Kind::kItem:
            return {"<ul>", "</ul>"};
        case HelpBlock::Kind::kName:
        case HelpBlock::Kind::kFigure:
            return {"<table style='margin-top: 8px; margin-bottom: 8px' width='100%' cellspacing='0' cellpadding='4'>",
                    "</table>"};
        default:
            return {};
    }
}

// Its name, how it is worked out, and what comes out; of a given figure the value alone.
QString FigureRow(const HelpBlock& block) {
    std::vector<std::string> steps = FigureSteps(block);
    const QString value = Escaped(steps.back());
    steps.pop_back();
    const QString name = "<tr><td width='32%'><b>" + Escaped(block.name) + "</b></td><td>";
    if (steps.empty())
        return name + value + "</td><td></td></tr>";
    QStringList lines;
    for (const std::string& step : steps)
        lines << "= " + Escaped(step);
    return name + lines.join("<br>") + "</td><td width='16%' align='right' style='white-space: nowrap'><b>" + value +
           "</b></td></tr>";
}

QString BlockText(const HelpBlock& block) {
    const QString text = Escaped(block.text);
    switch (block.kind) {
        case HelpBlock::Kind::kHeading:
            return "<h2>" + text + "</h2>";
        case HelpBlock::Kind::kItem:
            return "<li>" + text + "</li>";
        case HelpBlock::Kind::kName:
            return "<tr><td width='32%'><b>" + Escaped(block.name) + "</b></td><td>" + text + "</td></tr>";
        case HelpBlock::Kind::kFigure:
            return FigureRow(block);
        case HelpBlock::Kind::kParagraph:
            break;
    }
    return "<p>" + text + "</p>";
}

QString Links(const HelpFile& file, const HelpPage& page) {
    if (page.see.empty())
        return {};
    QString links = "<h2>" + QCoreApplication::translate("HelpWindow", "See also").toHtmlEscaped() + "</h2><ul>";
    for (const int context : page.see)
        links += "<li><a href='" + TopicAddress(context).toString() + "'>" + Escaped(file.Find(context)->title) +
                 "</a></li>";
    return links + "</ul>";
}

}  // namespace

QString PageText(const HelpFile& file, const HelpPage& page) {
    QString text = "<h1>" + Escaped(page.title) + "</h1>";
    Frame frame;
    const HelpBlock* before = nullptr;
    for (const HelpBlock& block : page.blocks) {
        if (!before || before->kind != block.kind) {
            text += frame.end;
            frame = FrameOf(block.kind);
            text += frame.begin;
        }
        text += BlockText(block);
        before = &block;
    }
    return text + frame.end + Links(file, page);
}

QUrl TopicAddress(int context) {
    return QUrl(kScheme + ":" + QString::number(context));
}

int TopicOf(const QUrl& address) {
    return address.scheme() == kScheme ? address.path().toInt() : 0;
}

}  // namespace ledgix::shell
