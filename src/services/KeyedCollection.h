#pragma once

#include "platform/CodePage.h"
#include "platform/Failure.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {

/// An ordered map from text key to item: keeps insertion order, compares keys without regard to case, finds
/// a key in constant time.
template <class Item>
class KeyedCollection {
  public:
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    KeyedCollection() = default;
    KeyedCollection(const KeyedCollection&) = delete;
    KeyedCollection& operator=(const KeyedCollection&) = delete;
    ~KeyedCollection() = default;

    /// Adds at the end. Throws Failure (457) when the key is taken.
    Item& Add(std::string_view key, Item item) {
        if (!TryAdd(key, std::move(item)))
            throw Failure(FailureDuplicateKey,
                          "This key is already associated with an element of this collection");
        return entries.back().second;
    }

    /// Adds at the end unless the key is taken; false (and `item` left alone) when it is.
    template <class Value = Item>
    bool TryAdd(std::string_view key, Value&& item) {
        if (2 * (entries.size() + 1) > table.size())
            Reindex(2 * table.size());
        const std::uint32_t hash = HashOf(key);
        Slot& slot = table[SlotOf(key, hash)];
        if (slot.Position != FreeSlot)
            return false;
        slot = {hash, static_cast<std::uint32_t>(entries.size())};
        entries.emplace_back(key, std::forward<Value>(item));
        return true;
    }

    [[nodiscard]] std::size_t IndexOf(std::string_view key) const {
        if (entries.empty())
            return None;
        const Slot& slot = table[SlotOf(key, HashOf(key))];
        return slot.Position == FreeSlot ? None : slot.Position;
    }
    [[nodiscard]] bool Exists(std::string_view key) const { return IndexOf(key) != None; }

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
        table.clear();
        return std::exchange(entries, {});
    }
    /// Takes entries with unique keys in the order given, in place of the present ones.
    void Refill(std::vector<Entry> newEntries) {
        table.clear();
        entries = std::move(newEntries);
        Reindex(2 * (entries.size() + 1));
    }

    auto begin() { return entries.begin(); }
    auto end() { return entries.end(); }
    [[nodiscard]] auto begin() const { return entries.begin(); }
    [[nodiscard]] auto end() const { return entries.end(); }

  private:
    // Open addressing; the positions of the entries are found by the hash of their folded keys.
    struct Slot {
        std::uint32_t Hash;
        std::uint32_t Position;
    };
    static constexpr std::uint32_t FreeSlot = 0xFFFFFFFF;

    static std::uint32_t HashOf(std::string_view key) {
        const std::uint64_t hash = CodePage::HashNoCase(key);
        return static_cast<std::uint32_t>(hash ^ (hash >> 32));
    }

    /// The slot of a key, or the free one that it would take.
    [[nodiscard]] std::size_t SlotOf(std::string_view key, std::uint32_t hash) const {
        const std::size_t mask = table.size() - 1;
        std::size_t at = hash & mask;
        while (table[at].Position != FreeSlot &&
               (table[at].Hash != hash || !CodePage::EqualNoCase(entries[table[at].Position].first, key)))
            at = (at + 1) & mask;
        return at;
    }

    void Reindex(std::size_t least) {
        const auto old = std::exchange(
            table, std::vector<Slot>(std::bit_ceil(std::max<std::size_t>(least, 16)), Slot{0, FreeSlot}));
        const std::size_t mask = table.size() - 1;
        const auto place = [&](std::uint32_t hash, std::uint32_t position) {
            std::size_t at = hash & mask;
            while (table[at].Position != FreeSlot)
                at = (at + 1) & mask;
            table[at] = {hash, position};
        };
        if (!old.empty())
            for (const Slot& slot : old) {
                if (slot.Position != FreeSlot)
                    place(slot.Hash, slot.Position);
            }
        else
            for (std::size_t i = 0; i < entries.size(); ++i)
                place(HashOf(entries[i].first), static_cast<std::uint32_t>(i));
    }

    std::vector<Entry> entries;
    std::vector<Slot> table;
};

} // namespace velmora
