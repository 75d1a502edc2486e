#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "page_file.h"

namespace ledgix::test {

// Files in memory that can lose their power: what was not synced may be lost then, in part and in any order, as a real
// disk may lose it. Nobody else uses the files, so locks are always free.
class MemoryDisk : public jet::FileSystem {
public:
    // A file whose content is safe.
    void Put(const std::string& path, std::vector<std::uint8_t> content);

    // From the operation with this number on, from 1, every operation fails; 0: none.
    void StopAt(std::size_t operation);
    std::size_t operations() const { return operations_; }

    // What is found when the power comes back: of each write, cut and change of names that was not synced, all, nothing
    // or some sectors are there.
    void LosePower(std::mt19937& random);

    std::unique_ptr<jet::PageFile> Open(const std::string& path, jet::OpenMode mode) override;
    std::unique_ptr<jet::PageFile> Create(const std::string& path, const std::string& like) override;
    bool Exists(const std::string& path) override { return names_.contains(path); }
    void Remove(const std::string& path) override;
    void SyncFolderOf(const std::string& path) override;

private:
    class File;
    struct Change {
        bool cuts = false;  // to a length of `offset`
        std::uint64_t offset = 0;
        std::vector<std::uint8_t> bytes;
    };
    struct Content {
        std::vector<std::uint8_t> safe;
        std::vector<std::uint8_t> now;
        std::vector<Change> pending;
        std::int64_t modified = 0;
    };
    using Names = std::map<std::string, std::shared_ptr<Content>>;

    void Count();
    static void Apply(const Change& change, std::vector<std::uint8_t>& content);
    static void ApplySome(const Change& change, std::vector<std::uint8_t>& content, std::mt19937& random);

    Names safe_names_;
    Names names_;
    std::size_t operations_ = 0;
    std::size_t stop_at_ = 0;
};

}  // namespace ledgix::test
