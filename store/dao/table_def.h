#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dao_constants.h"
#include "runtime_error.h"
#include "text.h"

namespace ledgix::dao {

// Equal for names that differ in case only.
inline std::uint32_t NameHash(std::string_view name) {
    std::uint32_t hash = 2166136261U;
    for (const char c : name) {
        if (static_cast<unsigned char>(c) >= 0x80)
            continue;
        const char lower = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        hash = (hash ^ static_cast<unsigned char>(lower)) * 16777619U;
    }
    return hash;
}

// A list of named things, found by position from 0 or by name in any case.
template <class Item>
class Collection {
public:
    Collection() = default;
    explicit Collection(std::vector<Item> items) {
        for (Item& item : items)
            Append(std::move(item));
    }

    void Append(Item item) {
        hashes_.push_back(NameHash(item.name));
        items_.push_back(std::move(item));
    }

    std::size_t Count() const { return items_.size(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

    bool Contains(std::string_view name) const { return Find(name) < items_.size(); }

    // Errors: 3265 when the collection holds no such item.
    std::size_t PositionOf(std::string_view name) const {
        const std::size_t position = Find(name);
        if (position == items_.size())
            RaiseNotFound(std::string(name));
        return position;
    }
    const Item& operator[](std::string_view name) const { return items_[PositionOf(name)]; }
    const Item& operator[](std::size_t position) const {
        if (position >= items_.size())
            RaiseNotFound(std::to_string(position));
        return items_[position];
    }

private:
    // The number of items when there is none.
    std::size_t Find(std::string_view name) const {
        const std::uint32_t hash = NameHash(name);
        std::size_t position = 0;
        while (position < items_.size() && (hashes_[position] != hash || !IsNamed(items_[position], name)))
            ++position;
        return position;
    }

    static bool IsNamed(const Item& item, std::string_view name) {
        return item.name == name || runtime::EqualsIgnoringCase(item.name, name);
    }

    [[noreturn]] static void RaiseNotFound(const std::string& item) {
        runtime::RaiseEngineError(runtime::ErrorNumber::kItemNotFound, "Item not found in this collection: " + item);
    }

    std::vector<Item> items_;
    std::vector<std::uint32_t> hashes_;  // of their names
};

// A column of a table, or of a query's result.
struct Field {
    std::string name;
    FieldType type = kLong;
    int size = 0;  // text: characters; other types: bytes; memo and OLE: 0
    std::int32_t attributes = 0;
};

struct IndexField {
    std::string name;
    bool descending = false;
};

struct Index {
    std::string name;
    std::vector<IndexField> fields;
    bool primary = false;
    bool unique = false;
    bool required = false;
    bool ignore_nulls = false;
    bool foreign = false;  // belongs to a relationship
};

// The definition of a stored table, as it was when it was asked for.
struct TableDef {
    std::string name;
    Collection<Field> fields;
    Collection<Index> indexes;
    std::uint32_t record_count = 0;  // the table's own counter
};

// An entry of the catalogue that is a table or stands for one.
struct TableEntry {
    enum class Kind { kUser, kSystem, kLinked };
    std::string name;
    Kind kind = Kind::kUser;
};

}  // namespace ledgix::dao
