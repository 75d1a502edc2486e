#include "chart_loader.h"

#include <QDir>
#include <QFileInfo>
#include <QLibrary>

#include "library_folders.h"

namespace ledgix::preview {

namespace {

QStringList Folders() {
    QStringList folders;
    for (const std::string& folder : runtime::LibraryFolders())
        folders << QString::fromStdString(folder);
    return folders;
}

}  // namespace

bool HasCharts() {
    return !FindChartLibrary(Folders()).isEmpty();
}

const chart::ChartDrawer* Charts() {
    static const chart::ChartDrawer* const drawer = LoadCharts(FindChartLibrary(Folders()));
    return drawer;
}

QString FindChartLibrary(const QStringList& folders) {
    for (const QString& folder : folders)
        for (const char* prefix : {"lib", ""})
            for (const char* suffix : {".so", ".dll", ".dylib"}) {
                const QString file = QDir(folder).filePath(QString(prefix) + chart::kChartLibrary + suffix);
                if (QFileInfo(file).isFile())
                    return file;
            }
    return {};
}

const chart::ChartDrawer* LoadCharts(const QString& file) {
    if (file.isEmpty())
        return nullptr;
    QLibrary library(file);
    const auto drawer = reinterpret_cast<chart::ChartDrawerFunction>(library.resolve(chart::kChartDrawerName));
    return drawer ? drawer() : nullptr;
}

}  // namespace ledgix::preview
