#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dao_constants.h"
#include "runtime_error.h"
#include "text.h"

namespace ledgix::dao {

// A list of named things, found by position from 0 or by name in any case.
template <class Item>
class Collection {
public:
    Collection() = default;
    explicit Collection(std::vector<Item> items) : items_(std::move(items)) {}

    std::size_t Count() const { return items_.size(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

    bool Contains(std::string_view name) const { return Find(name) != items_.end(); }

    // Errors: 3265 when the collection holds no such item.
    const Item& operator[](std::string_view name) const {
        const auto found = Find(name);
        if (found == items_.end())
            RaiseNotFound(std::string(name));
        return *found;
    }
    const Item& operator[](std::size_t position) const {
        if (position >= items_.size())
            RaiseNotFound(std::to_string(position));
        return items_[position];
    }

private:
    auto Find(std::string_view name) const {
        return std::find_if(items_.begin(), items_.end(),
                            [&](const Item& item) { return runtime::EqualsIgnoringCase(item.name, name); });
    }

    [[noreturn]] static void RaiseNotFound(const std::string& item) {
        runtime::RaiseEngineError(runtime::ErrorNumber::kItemNotFound, "Item not found in this collection: " + item);
    }

    std::vector<Item> items_;
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
