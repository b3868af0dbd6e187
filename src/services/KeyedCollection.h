#pragma once

#include "platform/CodePage.h"
#include "platform/Failure.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace velmora {

/// An ordered map from text key to item: keeps insertion order, compares keys without regard to case, finds
/// a key in constant time.
template <class Item>
class KeyedCollection {
  public:
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    KeyedCollection() : index(0, Hash{this}, Equal{this}) {}
    KeyedCollection(const KeyedCollection&) = delete;
    KeyedCollection& operator=(const KeyedCollection&) = delete;
    ~KeyedCollection() = default;

    /// Adds at the end. Throws Failure (457) when the key is taken.
    Item& Add(std::string key, Item item) {
        if (!TryAdd(std::move(key), std::move(item)))
            throw Failure(FailureDuplicateKey,
                          "This key is already associated with an element of this collection");
        return entries.back().second;
    }

    /// Adds at the end unless the key is taken; false (and `item` dropped) when it is.
    bool TryAdd(std::string key, Item item) {
        if (Exists(key))
            return false;
        entries.emplace_back(std::move(key), std::move(item));
        index.insert(entries.size() - 1);
        return true;
    }

    [[nodiscard]] std::size_t IndexOf(std::string_view key) const {
        const auto found = index.find(key);
        return found == index.end() ? None : *found;
    }
    [[nodiscard]] bool Exists(std::string_view key) const { return index.find(key) != index.end(); }

    /// The item of a key, nullptr when absent.
    [[nodiscard]] const Item* Find(std::string_view key) const {
        const std::size_t at = IndexOf(key);
        return at == None ? nullptr : &entries[at].second;
    }
    [[nodiscard]] Item* Find(std::string_view key) {
        const std::size_t at = IndexOf(key);
        return at == None ? nullptr : &entries[at].second;
    }

    [[nodiscard]] std::size_t Count() const { return entries.size(); }
    [[nodiscard]] bool Empty() const { return entries.empty(); }
    [[nodiscard]] const std::string& KeyAt(std::size_t at) const { return entries.at(at).first; }
    [[nodiscard]] Item& ItemAt(std::size_t at) { return entries.at(at).second; }
    [[nodiscard]] const Item& ItemAt(std::size_t at) const { return entries.at(at).second; }

    /// Removes a key with its item; false when absent.
    bool Remove(std::string_view key) {
        const std::size_t at = IndexOf(key);
        if (at == None)
            return false;
        auto kept = TakeAll();
        kept.erase(kept.begin() + static_cast<std::ptrdiff_t>(at));
        Refill(std::move(kept));
        return true;
    }

    void RemoveAll() { TakeAll(); }

    using Entry = std::pair<std::string, Item>;
    /// Empties the collection and hands out its entries in order.
    std::vector<Entry> TakeAll() {
        index.clear();
        return std::exchange(entries, {});
    }
    /// Takes entries with unique keys in the order given, in place of the present ones.
    void Refill(std::vector<Entry> newEntries) {
        index.clear();
        entries = std::move(newEntries);
        index.reserve(entries.size());
        for (std::size_t i = 0; i < entries.size(); ++i)
            index.insert(i);
    }

    auto begin() { return entries.begin(); }
    auto end() { return entries.end(); }
    [[nodiscard]] auto begin() const { return entries.begin(); }
    [[nodiscard]] auto end() const { return entries.end(); }

  private:
    struct Hash {
        using is_transparent = void;
        const KeyedCollection* Owner;
        std::size_t operator()(std::size_t at) const {
            return CodePage::HashNoCase(Owner->entries[at].first);
        }
        std::size_t operator()(std::string_view key) const { return CodePage::HashNoCase(key); }
    };
    struct Equal {
        using is_transparent = void;
        const KeyedCollection* Owner;
        bool operator()(std::size_t left, std::size_t right) const { return left == right; }
        bool operator()(std::string_view key, std::size_t at) const {
            return CodePage::EqualNoCase(key, Owner->entries[at].first);
        }
        bool operator()(std::size_t at, std::string_view key) const { return (*this)(key, at); }
    };

    std::vector<Entry> entries;
    std::unordered_set<std::size_t, Hash, Equal> index;
};

} // namespace velmora
