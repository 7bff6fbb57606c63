// A bounded store that forgets what was used longest ago.
#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <utility>

namespace rastel::platform {

// Values are handed out by copy (shared pointers, as a rule), so that forgetting never pulls one from under a user.
template <typename Key, typename Value>
class FontCache {
public:
    explicit FontCache(std::size_t capacity) : capacity_(capacity) {}

    // A default value when the key is not there.
    Value Find(const Key& key) {
        const auto found = places_.find(key);
        if (found == places_.end()) {
            return Value();
        }
        entries_.splice(entries_.begin(), entries_, found->second);
        return found->second->value;
    }

    // `cost` counts against the capacity. What costs more than half of it is not kept, for it would drive out the rest.
    void Insert(const Key& key, Value value, std::size_t cost) {
        if (cost > capacity_ / 2 || places_.contains(key)) {
            return;
        }
        while (!entries_.empty() && cost_ + cost > capacity_) {
            cost_ -= entries_.back().cost;
            places_.erase(entries_.back().key);
            entries_.pop_back();
        }
        entries_.push_front(Entry{key, std::move(value), cost});
        try {
            places_.emplace(key, entries_.begin());
        } catch (...) {
            entries_.pop_front();
            throw;
        }
        cost_ += cost;
    }

    void Clear() {
        places_.clear();
        entries_.clear();
        cost_ = 0;
    }

private:
    struct Entry {
        Key key;
        Value value;
        std::size_t cost;
    };

    std::size_t capacity_;
    std::size_t cost_ = 0;
    std::list<Entry> entries_;   // most recently used first
    std::map<Key, typename std::list<Entry>::iterator> places_;
};

}   // namespace rastel::platform
