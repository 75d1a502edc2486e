#include <QApplication>
#include <QCommandLineParser>
#include <QPalette>
#include <QPixmap>
#include <QTimer>

#include "gallery.h"

namespace {

constexpr int kSettlingTime = 300;  // milliseconds until the window has the focus

void UseDarkColours() {
    const QColor grey(53, 53, 53);
    QPalette colours(grey, grey);
    colours.setColor(QPalette::Base, QColor(35, 35, 35));
    colours.setColor(QPalette::Highlight, QColor(42, 130, 218));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        colours.setColor(QPalette::Disabled, role, QColor(127, 127, 127));
    }
    QApplication::setPalette(colours);
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription("Shows the program's own controls.");
    parser.addHelpOption();
    const QCommandLineOption screenshot("screenshot", "Writes a picture of the window to a file, and ends.", "file");
    const QCommandLineOption dark("dark", "Shows the controls in dark colours.");
    parser.addOptions({screenshot, dark});
    parser.process(application);
    if (parser.isSet(dark)) {
        UseDarkColours();
    }

    Gallery gallery;
    gallery.show();
    if (parser.isSet(screenshot)) {
        QTimer::singleShot(kSettlingTime, &gallery, [&] {
            const bool written = gallery.grab().save(parser.value(screenshot), "PNG");
            QApplication::exit(written ? 0 : 1);
        });
    }
    return QApplication::exec();
}
