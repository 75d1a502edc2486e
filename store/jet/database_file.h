#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalog.h"
#include "file_sharing.h"
#include "header_page.h"
#include "jet_format.h"
#include "jet_types.h"
#include "page_file.h"
#include "pager.h"
#include "table_definition.h"

namespace ledgix::jet {

// One open database file. One thread. Nothing but the header page is read at opening. Whoever shares the file with
// others holds a ReadAccess or a Transaction while calling anything below.
class DatabaseFile {
public:
    // Changes of this file are written without a journal: for files in memory, and to read. Errors: 3343 for a file of
    // another format, 3049 for a damaged one, 3031 for one protected by a password, 3112 for an encrypted one, 3043
    // when it cannot be read.
    explicit DatabaseFile(std::unique_ptr<PageFile> file);

    // A file that others may have open too. An incomplete change is undone first. `files` must outlive this. Errors as
    // above, and those of FileSystem::Open and ReadAccess.
    DatabaseFile(const std::string& path, OpenMode mode, FileSystem& files = DiskFileSystem());

    Generation generation() const { return header_.generation; }
    int code_page() const { return header_.code_page; }
    const Format& format() const { return FormatOf(header_.generation); }
    Pager& pager() { return pager_; }
    FileSharing& sharing() { return sharing_; }

    // Differs from an earlier answer when anything in the file may have changed since.
    std::uint64_t change_count() const { return change_count_; }

    // How long to wait for others.
    void SetPatience(std::chrono::milliseconds patience) { sharing_.SetPatience(patience); }

    // All rows of MSysObjects, in file order. Errors 3049, 3043, as in all that follows.
    std::vector<CatalogEntry> ReadCatalog();

    // The table of any kind, linked ones included, with this name in any case.
    std::optional<CatalogEntry> FindTable(std::string_view name);

    TableDefinition ReadTableDefinition(PageNumber page);

private:
    friend class ReadAccess;
    friend class Transaction;

    DatabaseFile(std::unique_ptr<PageFile> file, FileSystem& files, const std::string& path);

    void BeginReading();
    void EndReading();
    void BeginTransaction();
    void CommitTransaction();
    void RollBack();

    void ForgetWhatChanged();
    void WriteChanges();
    void WritePages(const std::vector<PagePtr>& pages);

    FileSharing sharing_;
    HeaderPage header_;
    Pager pager_;
    std::optional<FileStamp> stamp_;  // of the file when what is in memory was read
    std::uint64_t change_count_ = 0;
    int readers_ = 0;
};

// Opens a file that others may have open too, to write where that is allowed, else to read.
std::unique_ptr<DatabaseFile> OpenDatabaseFile(const std::string& path);

}  // namespace ledgix::jet
