#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "runtime_error.h"
#include "text.h"

namespace ledgix::model {

// Owned objects in the order in which they were added, found by position from 1 or by a text key in any case.
template <class Item>
class KeyedCollection {
public:
    std::size_t Count() const { return items_.size(); }

    bool Contains(std::string_view key) const { return positions_.contains(key); }

    // Error 457 when the key is held already; nothing is added then.
    Item& Add(std::unique_ptr<Item> item, const std::string& key) {
        if (!positions_.emplace(key, items_.size()).second)
            runtime::RaiseError(runtime::ErrorNumber::kDuplicateKey);
        items_.push_back(std::move(item));
        return *items_.back();
    }

    // Error 9 when there is no such position.
    Item& operator[](std::size_t position) const {
        if (position < 1 || position > items_.size())
            runtime::RaiseError(runtime::ErrorNumber::kSubscript);
        return *items_[position - 1];
    }

    // Error 5 when the key is not held.
    Item& operator[](std::string_view key) const {
        const auto found = positions_.find(key);
        if (found == positions_.end())
            runtime::RaiseError(runtime::ErrorNumber::kInvalidArgument);
        return *items_[found->second];
    }

    // Errors as of the operators above.
    void Remove(std::size_t position) {
        static_cast<void>((*this)[position]);
        std::erase_if(positions_, [&](const auto& entry) { return entry.second == position - 1; });
        for (auto& entry : positions_)
            entry.second -= entry.second >= position ? 1U : 0U;
        items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(position - 1));
    }
    void Remove(std::string_view key) {
        static_cast<void>((*this)[key]);
        Remove(positions_.find(key)->second + 1);
    }

    // Gives an item another key; its position stays. Errors 5 when `key` is not held, 457 when `new_key` is, by
    // another.
    void Rename(std::string_view key, const std::string& new_key) {
        const auto found = positions_.find(key);
        if (found == positions_.end())
            runtime::RaiseError(runtime::ErrorNumber::kInvalidArgument);
        const std::size_t position = found->second;
        if (const auto held = positions_.find(new_key); held != positions_.end() && held != found)
            runtime::RaiseError(runtime::ErrorNumber::kDuplicateKey);
        positions_.erase(found);
        positions_.emplace(new_key, position);
    }

    // The keys in the order of the items.
    std::vector<std::string> Keys() const {
        std::vector<std::string> keys(items_.size());
        for (const auto& [key, position] : positions_)
            keys[position] = key;
        return keys;
    }

    void Clear() {
        positions_.clear();
        items_.clear();
    }

private:
    std::vector<std::unique_ptr<Item>> items_;
    std::map<std::string, std::size_t, runtime::LessIgnoringCase> positions_;
};

}  // namespace ledgix::model
