#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "page_file.h"

namespace ledgix::test {

// What goes wrong.
enum class Fault {
    kOnce,  // one operation fails, those behind it don't
    kStop,  // the operation fails and so do all behind it, as when the program is killed
    kTorn,  // the same, but a write has done half its work
    kFull,  // files can't grow any more from the operation on
};

// Files on the disk, of which an operation fails on purpose. Opening, making, writing, cutting, syncing and removing
// count; reading and locking do not.
class FaultyFiles : public jet::FileSystem {
public:
    // The operation with this number, from 1, fails; 0: none.
    void FailAt(std::size_t operation, Fault fault);
    // Operations since FailAt was called, failed ones included.
    std::size_t operations() const { return state_->operations; }
    bool failed() const { return state_->failed; }

    std::unique_ptr<jet::PageFile> Open(const std::string& path, jet::OpenMode mode) override;
    std::unique_ptr<jet::PageFile> Create(const std::string& path, const std::string& like) override;
    bool Exists(const std::string& path) override { return jet::DiskFileSystem().Exists(path); }
    void Remove(const std::string& path) override;
    void SyncFolderOf(const std::string& path) override;

private:
    class File;
    struct State {
        std::size_t operations = 0;
        std::size_t fail_at = 0;
        Fault fault = Fault::kOnce;
        bool failed = false;

        bool FailsNow();
        void Count();
    };

    std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace ledgix::test
