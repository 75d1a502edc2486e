#include "database_file.h"

#include <cassert>
#include <utility>

#include "damage_error.h"
#include "definition_reader.h"
#include "resume_next.h"
#include "runtime_error.h"

namespace ledgix::jet {

namespace {

constexpr std::size_t kMostPagesAtOnce = 256;

}  // namespace

DatabaseFile::DatabaseFile(std::unique_ptr<PageFile> file)
    : sharing_(*file), header_(ReadHeaderPage(*file)), pager_(std::move(file), FormatOf(header_.generation)) {}

DatabaseFile::DatabaseFile(const std::string& path, OpenMode mode, FileSystem& files)
    : DatabaseFile(files.Open(path, mode), files, path) {}

// When something fails the file is closed, and its locks go with it.
DatabaseFile::DatabaseFile(std::unique_ptr<PageFile> file, FileSystem& files, const std::string& path)
    : sharing_(*file, files, path),
      header_((sharing_.LockToRead(), ReadHeaderPage(*file))),
      pager_(std::move(file), FormatOf(header_.generation)),
      stamp_(pager_.file().Stamp()) {
    sharing_.Unlock();
}

std::vector<CatalogEntry> DatabaseFile::ReadCatalog() {
    return ReadCatalogTable(*this);
}

std::optional<CatalogEntry> DatabaseFile::FindTable(std::string_view name) {
    const std::vector<CatalogEntry> catalog = ReadCatalog();
    const CatalogEntry* found = jet::FindTable(catalog, name);
    return found == nullptr ? std::nullopt : std::optional(*found);
}

TableDefinition DatabaseFile::ReadTableDefinition(PageNumber page) {
    return ReadDefinition(pager_, page);
}

void DatabaseFile::BeginReading() {
    if (readers_ == 0 && pager_.level_count() == 0) {
        sharing_.LockToRead();
        try {
            ForgetWhatChanged();
        } catch (const runtime::RuntimeError&) {
            sharing_.Unlock();
            throw;
        }
    }
    ++readers_;
}

void DatabaseFile::EndReading() {
    if (--readers_ == 0 && pager_.level_count() == 0)
        sharing_.Unlock();
}

void DatabaseFile::BeginTransaction() {
    if (pager_.level_count() == 0) {
        assert(readers_ == 0);
        sharing_.LockToWrite();
        try {
            ForgetWhatChanged();
        } catch (const runtime::RuntimeError&) {
            sharing_.Unlock();
            throw;
        }
    }
    pager_.BeginLevel();
}

void DatabaseFile::ForgetWhatChanged() {
    const FileStamp now = pager_.file().Stamp();
    if (stamp_ == now)
        return;
    stamp_.reset();
    ++change_count_;
    pager_.Forget();
    const HeaderPage header = ReadHeaderPage(pager_.file());
    if (header.generation != header_.generation)
        RaiseDamage("another file, of another generation, took its place");
    header_ = header;
    stamp_ = now;
}

void DatabaseFile::CommitTransaction() {
    if (pager_.level_count() > 1) {
        pager_.MergeLevel();
        return;
    }
    try {
        WriteChanges();
    } catch (...) {
        stamp_.reset();
        RollBack();
        throw;
    }
    pager_.KeepLevel();
    ++change_count_;
    sharing_.Unlock();
}

void DatabaseFile::RollBack() {
    pager_.DropLevel();
    ++change_count_;
    if (pager_.level_count() == 0)
        sharing_.Unlock();
}

void DatabaseFile::WriteChanges() {
    const std::vector<PagePtr> pages = pager_.ChangedPages();
    if (pages.empty())
        return;
    PageFile& file = pager_.file();
    RollbackJournal* journal = sharing_.journal();
    const FileStamp before = file.Stamp();
    if (journal != nullptr)
        journal->Write(file, pager_.page_count_before(), pages);
    try {
        WritePages(pages);
        file.Touch(before);
        file.Sync();
    } catch (...) {
        // What can't be undone now is undone at the next opening.
        if (journal != nullptr)
            runtime::ResumeNext([&] { journal->Undo(file); }, [](const runtime::RuntimeError&) {});
        throw;
    }
    if (journal != nullptr)
        journal->Discard();
    stamp_ = file.Stamp();
}

// Neighbouring pages are written at once.
void DatabaseFile::WritePages(const std::vector<PagePtr>& pages) {
    const std::size_t page_size = format().page_size;
    std::vector<std::uint8_t> run;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        run.insert(run.end(), pages[i]->bytes.begin(), pages[i]->bytes.end());
        const bool last = i + 1 == pages.size() || pages[i + 1]->number != pages[i]->number + 1;
        if (!last && run.size() < kMostPagesAtOnce * page_size)
            continue;
        pager_.file().Write((pages[i]->number + std::uint64_t{1}) * page_size - run.size(), run);
        run.clear();
    }
}

std::unique_ptr<DatabaseFile> OpenDatabaseFile(const std::string& path) {
    try {
        return std::make_unique<DatabaseFile>(path, OpenMode::kReadWrite);
    } catch (const runtime::RuntimeError& error) {
        if (!error.Is(runtime::ErrorNumber::kCannotOpenFile))
            throw;
    }
    return std::make_unique<DatabaseFile>(path, OpenMode::kRead);
}

}  // namespace ledgix::jet
